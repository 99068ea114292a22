// Answers whether headers of another build than the library's are found out.

#include "kivara_version.hpp"

#undef KIVARA_VERSION_BUILD
#define KIVARA_VERSION_BUILD 4711

#include "aappinfo.hpp"

int main() { return Kiv_HeadersMatchLibrary() ? 1 : 0; }
