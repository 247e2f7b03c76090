// What the host has always had. `getCurDate` stands here with the type that Utility.h declares it with.
#include <string>

char* itoa(int value, char* buffer, int radix);
char* strrev(char* text);
void trim(std::string& text, char byte);
int getCurDate();
