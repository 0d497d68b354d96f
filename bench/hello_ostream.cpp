// The yard-stick for the start of a program: one line through an ostream.

#include <iostream>

int main() {
    std::cout << "hello\n";
}
