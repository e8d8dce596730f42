// Plays what of the music is asked for. What makes the data set is in making/.
#include "production/music/audition.h"

int main(int count, char** words) {
    return audition({words + 1, words + count});
}
