int fine;
