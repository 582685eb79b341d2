int from_marked_file;
