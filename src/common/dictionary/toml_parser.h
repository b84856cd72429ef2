#pragma once
// The one way this layer includes toml++: header-only, without exceptions, so
// that a syntax error comes back as a value and the library links nothing new.
#ifndef TOML_HEADER_ONLY
#define TOML_HEADER_ONLY 1
#endif
#ifndef TOML_EXCEPTIONS
#define TOML_EXCEPTIONS 0
#endif
#include <toml++/toml.h>
