#pragma once
// x_abort: the end of the program when something it cannot do without (above
// all memory) cannot be had. It writes one line to standard error, naming the
// code, the message and, when given, the source and line, then ends the
// process with abort(). It never returns.
//
// The library's one use is x_abort(0, "Memory allocation failed", nullptr, 0).

[[noreturn]] void x_abort(short code, const char* message, const char* source, short line);
