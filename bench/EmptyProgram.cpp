// The floor of every start: loads the libraries of the application and does nothing.
int main() { return 0; }
