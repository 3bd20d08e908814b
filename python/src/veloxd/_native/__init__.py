"""What calls the shared library: its functions, its one lock, its failures, its log, and the data sets in it."""
