// Lower bound of every start: loads the application's libraries and does nothing.
int main() { return 0; }
