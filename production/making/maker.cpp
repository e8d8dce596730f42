// Makes one product: `MAKE`, a function of the header `TABLE`. The build makes a program of this for each, so
// that it knows from the linker and the compiler what a product rests on.
#include TABLE

int main(int, char** words) {
    MAKE(words[1]);
}
