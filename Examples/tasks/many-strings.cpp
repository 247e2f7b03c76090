// Many short strings in one block, by their offsets, saved and loaded.
#include <MemoryExt.h>

#include <cstdio>
#include <iostream>

int main() {
    CStaticStr pool, copy;
    const int first = pool.AddString("红"), second = pool.AddString("楼梦");
    std::FILE* file = std::tmpfile();
    if (file == nullptr) return 1;
    pool.Write(file);
    std::rewind(file);
    copy.Read(file);
    std::fclose(file);
    std::cout << copy.GetStr(first) << copy.GetStr(second) << ", " << copy.m_nSize << " bytes\n";
}
