// Compiled with a macro that stands for a platform whose C library has these functions: declaring them again, as
// functions of C++, would not compile. Compiling it is the test.

#include <Utility.h>
#include <global_linux.h>

extern "C" {
char* itoa(int, char*, int);
char* strlwr(char*);
char* strupr(char*);
char* strrev(char*);
}
