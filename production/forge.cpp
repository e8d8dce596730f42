// The music's desk as a program. What makes the data set is in making/.
#include "production/music/desk.h"

int main(int count, char** words) {
    return runDesk({words + 1, words + count});
}
