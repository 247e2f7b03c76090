#include "Own.h"

char* itoa(int, char* buffer, int) {
    buffer[0] = 'H';
    buffer[1] = '\0';
    return buffer;
}

void trim(std::string& text, char) {
    text = "H";
}

int getCurDate() {
    return -1;
}
