#include "console_commands.h"

#include "text_words.h"

const std::vector<ConsoleCommand>& Console::Commands() {
    using C = ConsoleCommand;
    static const std::vector<ConsoleCommand> commands = {
        {"first", "", 0, C::NoRest, "first", "go to the first row (saving the row left first)", true, &Console::First},
        {"prev", "p", 0, C::NoRest, "prev", "go to the row before", true, &Console::Prev},
        {"next", "n", 0, C::NoRest, "next", "go to the row after", true, &Console::Next},
        {"last", "", 0, C::NoRest, "last", "go to the last row", true, &Console::Last},
        {"pgup", "pageup", 0, C::NoRest, "pgup", "go up a window's height", true, &Console::PageUp},
        {"pgdn", "pagedown", 0, C::NoRest, "pgdn", "go down a window's height", true, &Console::PageDown},
        {"percent", "", 1, C::NoRest, "percent N", "show the rows at N% of the table (0 to 100)", true,
         &Console::Percent},
        {"find", "", 1, C::RestRequired, "find COLUMN VALUE",
         "go to the first row whose COLUMN is VALUE or after it (COLUMN must order the buffer)", true, &Console::Find},
        {"prefix", "", 1, C::RestRequired, "prefix COLUMN TEXT", "go to the first row whose COLUMN starts with TEXT",
         true, &Console::Prefix},
        {"buffer", "use", 1, C::NoRest, "buffer NAME", "work in the buffer NAME (cust, orders or lines)", true,
         &Console::Buffer},
        {"show", "", 0, C::NoRest, "show", "print the window of the buffer", true, &Console::Show},
        {"set", "", 1, C::RestRequired, "set COLUMN VALUE", "type VALUE into COLUMN of the focus row (\"\" for empty)",
         false, &Console::Set},
        {"save", "", 0, C::NoRest, "save", "save the focus row (from cust: with its orders and lines)", true,
         &Console::Save},
        {"revert", "", 0, C::NoRest, "revert", "undo the changes of the focus row", true, &Console::Revert},
        {"delete", "", 0, C::NoRest, "delete", "delete the focus row (you are asked first)", true, &Console::Delete},
        {"append", "", 0, C::NoRest, "append", "go to the new row at the end", true, &Console::Append},
        {"reserve", "", 0, C::NoRest, "reserve", "put the new row's key on file now, so that rows under it can be saved",
         true, &Console::Reserve},
        {"audit", "", 0, C::NoRest, "audit", "show the record file's audit log, oldest entry first", false,
         &Console::Audit},
        {"spawn", "", 0, C::RestRequired, "spawn SCRIPT",
         "run another oxdm-console on the same file with SCRIPT and wait for it", false, &Console::Spawn},
        {"expect", "", 1, C::RestOptional, "expect WHAT [VALUE]", "check the last command (see 'help expect')", false,
         &Console::Expect},
        {"help", "?", 0, C::RestOptional, "help [expect]", "this list, or the checks that expect makes", false,
         &Console::Help},
        {"quit", "exit", 0, C::NoRest, "quit", "leave (refused while a row has unsaved changes)", false,
         &Console::Quit},
    };
    return commands;
}

const ConsoleCommand* Console::FindCommand(const std::string& name) {
    const std::string wanted = Lower(name);
    for (const ConsoleCommand& command : Commands())
        if (wanted == command.name || wanted == command.alias) return &command;
    return nullptr;
}
