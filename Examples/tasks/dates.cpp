// Dates as people write them, as seconds and back.
#include <Utility.h>

#include <cstdlib>
#include <iostream>

int main() {
    setenv("TZ", "Asia/Shanghai", 1);  // results are local times
    for (const char* text : {"2014-03-05 08:09:10", "2014/3/5_8:9", "2014年3月5日10时20分"}) {
        char chinese[27];
        const std::time_t time = str2time(text);
        std::cout << formatDateTime(time, false) << "  " << time2str(time, chinese, true) << '\n';
    }
}
