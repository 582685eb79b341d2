int commented; /* never
closed
