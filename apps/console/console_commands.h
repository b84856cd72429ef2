#pragma once
// The table of the console's commands: what each is called, the arguments
// it takes, its line of help and the member of Console that runs it. The
// loop checks the arguments against the table before a command runs.

#include <cstddef>

#include "console.h"

struct ConsoleCommand {
    // What may follow the command's words: nothing, or the rest of the line
    // as one text (a value with blanks in it), required or not.
    enum Rest { NoRest, RestRequired, RestOptional };

    const char* name;
    const char* alias;  // another name, "" for none
    size_t words;       // words that must follow the name, before the rest
    Rest rest;
    const char* usage;  // as help shows it: "find COLUMN VALUE"
    const char* help;
    bool redraw;  // print the window after the command, unless it failed
    void (Console::*run)(const Console::Args&);
};

// The checks that `expect` makes, one a line, as `help expect` prints them.
const char* ExpectHelp();
