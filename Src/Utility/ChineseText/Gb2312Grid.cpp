#include "Utility/ChineseText/Gb2312Grid.h"

#include <cstdio>

namespace {

// Lists every code from lead byte `first_lead` on.
bool WriteGrid(const char* path, int first_lead) {
    std::FILE* const file = std::fopen(path, "wt");
    if (file == nullptr) return false;
    for (int lead = first_lead; lead <= 0xFE; ++lead) {
        for (int trail = 0xA1; trail <= 0xFE; ++trail) {
            (void)std::fprintf(file, "%c%c,%d,%d\n", lead, trail, lead, trail);
        }
    }
    (void)std::fclose(file);
    return true;
}

}  // namespace

bool GB2312_Generate(char* path) {
    return WriteGrid(path, 0xA1);
}

bool CC_Generate(const char* path) {
    return WriteGrid(path, 0xB0);
}
