#pragma once
// Per-user preferences: keys (such as "General" or a grid's
// "Software\Quillfen\<grid>\<column>\") holding named values of three kinds:
// numbers, texts and raw bytes. Scope 1 is the user's own settings, scope 2
// the application settings as this user sees them.
//
// They are kept in $XDG_CONFIG_HOME/oxdm/preferences.toml (see
// preference_file.h in the sources for the format). A missing file or value
// is the normal first run: the caller's defaults stand. A damaged file is
// reported to the operator, set aside and started afresh.

struct x_value_def;

// A number stored under scope/key/name: answers the number, 0 when there is
// none. With a value record, also stores it there as a number. type names
// the kind the caller expects; 1, a number, is the only kind read this way.
long xpref_get_value(short scope, const char* key, const char* name, short type, x_value_def* value);

// Copies the bytes (or the text, zero-terminated when room allows) stored
// under scope/key/name into buffer, at most size bytes. Answers the number
// of bytes copied, 0 when there is no such value.
long xpref_get_data(short scope, const char* key, const char* name, unsigned char* buffer, short size);

// Store a value and write the file at once. Answer 0 on success, 1 when the
// value could not be written (it is then kept for this run only).
short xpref_put_data(short scope, const char* key, const char* name, const unsigned char* data, short size);
short xpref_put_string(short scope, const char* key, const char* name, const char* text);
short xpref_put_value(short scope, const char* key, const char* name, long value);

// Reads the preferences file again at the next access; for programs that
// change the file from outside, and for tests that point XDG_CONFIG_HOME
// elsewhere.
void xpref_reload();
