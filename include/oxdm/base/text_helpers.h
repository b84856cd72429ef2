#pragma once
// Small helpers on zero-terminated texts and raw memory, for the code that
// works on fixed-width record fields. Every text argument is a
// zero-terminated buffer; the caller guarantees room where a helper grows
// the text.

// Sets count bytes at target to ch.
// REQUIRES: target is not null or count is 0.
void x_fill(void* target, unsigned count, char ch);

// Inserts insert into text before position pos (clamped to the text's end).
// REQUIRES: text and insert are not null; text has room for both.
void x_strins(char* text, short pos, const char* insert);

// Deletes up to count characters of text from position pos; nothing when pos
// lies outside the text.
// REQUIRES: text is not null.
void x_strdel(char* text, short pos, short count);

// Lower-cases every letter of text.
// REQUIRES: text is not null.
void x_lower_case(char* text);

// Upper-cases the first letter of each word and lower-cases the others;
// words are separated by blanks.
// REQUIRES: text is not null.
void x_init_caps(char* text);

// Shortens text in place to at most width characters. Words are the runs
// between separator characters (0x20, a blank, by the library's callers).
// First the lower-case vowels inside words go, from the end of the text
// backwards (a word's first letter always stays), then, if the text is
// still too long, it is cut at width and its trailing separators dropped.
// A text that fits is left alone.
// REQUIRES: text is not null; width >= 0.
void x_abbreviate(char* text, short width, short separator);

// Memory that the lower layers hand over to their callers. x_alloc answers
// size bytes, zeroed when zero is true; when the memory cannot be had it ends
// the program through x_abort if fatal is true, else it answers null.
// x_free releases what x_alloc gave (null is allowed).
void* x_alloc(unsigned size, bool zero, bool fatal);
void x_free(void* memory);
