// Gives the process a locale with a decimal comma for the life of the object, as a host program may have.
#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

#include "framework/TemporaryFolder.h"

class CommaLocale {
public:
    CommaLocale()
    {
        // The locale is compiled here, so that the test does not depend on what the machine has installed.
        const std::string command =
            "localedef -i de_DE -f UTF-8 '" + m_folder.Native("de_DE.UTF-8").string() + "' >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) return;
        ::setenv("LOCPATH", m_folder.Path().c_str(), 1);
        m_isSet = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr && *std::localeconv()->decimal_point == ',';
    }
    ~CommaLocale()
    {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // False where locales cannot be made.
    bool IsSet() const { return m_isSet; }

private:
    TemporaryFolder m_folder;
    bool m_isSet = false;
};
