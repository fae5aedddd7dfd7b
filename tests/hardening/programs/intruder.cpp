// A program in the place of another one.

int main() { return 9; }
