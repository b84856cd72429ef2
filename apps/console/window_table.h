#pragma once
// Prints the window of a buffer as a table: a title line with the buffer's
// label, where the window stands and what the focus row is; a line of
// column names; then one line per window row. The focus row is marked '>'
// and shows what the operator typed; '*' marks it changed; the new row
// shows "(new row)" unless the focus is on it.

#include <string>

class oxdmBufferedFileDataSource;

std::string WindowTable(oxdmBufferedFileDataSource& buffer);
