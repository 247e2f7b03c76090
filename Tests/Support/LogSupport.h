#ifndef UTILITY_TESTS_LOGSUPPORT_H
#define UTILITY_TESTS_LOGSUPPORT_H

// For tests of what leaves a line in the log: the log goes to a folder of their own.

#include "Support/TestSupport.h"
#include "Utility/Global.h"
#include "Utility/Runtime/LogWriter.h"

namespace test_support {

class LoggedTest : public testing::Test {
protected:
    LoggedTest() { g_sLogPath = folder_.path(); }

    // The log of this kind, ".log" or ".err", with "[]" for each time stamp and the tab behind it; empty if there is
    // none.
    std::string Logged(const char* extension) const {
        std::string log;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            if (entry.path().extension() == extension) log += ReadFileBytes(entry.path());
        return std::regex_replace(log, std::regex("\\[[-: 0-9]*\\]\t"), "[]");
    }

    const TempFolder folder_;
    const Restore<std::string> path_{g_sLogPath}, message_{g_sLastErrorMessage};
    const Restore<bool> log_{g_bLog};
};

}  // namespace test_support

#endif
