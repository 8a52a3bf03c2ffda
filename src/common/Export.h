// The mark of everything that leaves a shared library; libraries are built with hidden visibility.
#pragma once

#if defined(__GNUC__)
#define RIVELTA_API __attribute__((visibility("default")))
#else
#define RIVELTA_API
#endif
