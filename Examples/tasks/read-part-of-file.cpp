// Records out of one big file, read by position: the file stays open between the reads.
#include <Utility.h>

#include <cstdio>
#include <iostream>

int main() {
    g_bLog = false;
    gfn_bWriteFile("records.dat", "AAAABBBBCCCC");
    {
        CReadFile reader;  // any number of threads may share it
        for (const long record : {2L, 0L}) {
            char* bytes = nullptr;
            const std::size_t size = reader.ReadFile("records.dat", &bytes, 4 * record, 4, false);
            std::cout << std::string(bytes, size) << '\n';
            delete[] bytes;  // also where the result is 0
        }
    }
    return std::remove("records.dat");
}
