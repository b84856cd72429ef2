#include "oxdm/base/abort.h"

#include <cstdio>
#include <cstdlib>

void x_abort(short code, const char* message, const char* source, short line) {
    std::fprintf(stderr, "oxdm: fatal error %d: %s", code, message ? message : "");
    if (source) std::fprintf(stderr, " (%s:%d)", source, line);
    std::fputc('\n', stderr);
    std::fflush(stderr);
    std::abort();
}
