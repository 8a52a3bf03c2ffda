// The memory of the process, in bytes.
#pragma once

#include <fstream>
#include <string>

namespace bench {

// VmHWM is the peak since this call.
inline void ResetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

// VmRSS, VmHWM, RssAnon...
inline double StatusBytes(const std::string& field)
{
    std::ifstream status("/proc/self/status");
    for (std::string name; status >> name;) {
        double value = 0;
        if (name == field + ":" && status >> value) return value * 1024;
    }
    return 0;
}

} // namespace bench
