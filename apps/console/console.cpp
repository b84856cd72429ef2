#include "console.h"

#include <cstdio>
#include <filesystem>
#include <utility>

#include "buffer_columns.h"
#include "console_audit.h"
#include "console_commands.h"
#include "line_input.h"
#include "oxdm/base/exception.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "sales_screen.h"
#include "spawn.h"
#include "terminal_presenter.h"
#include "text_words.h"
#include "window_table.h"

Console::Console(SalesScreen& screen, LineInput& input, TerminalPresenter& presenter, Setting setting)
    : screen_(screen), input_(input), presenter_(presenter), setting_(std::move(setting)) {}

int Console::Run() {
    PrintWindow();
    while (!stop_) {
        const std::optional<std::string> line = input_.Next();
        if (!line) break;
        Execute(*line);
    }
    const std::string changed = screen_.FirstChangedBuffer();
    if (!changed.empty()) std::printf("note: the changes of the focus row in %s were not saved\n", changed.c_str());
    if (met_ + failures_ > 0) std::printf("expectations: %d met, %d failed\n", met_, failures_);
    return failures_ + presenter_.Unanswered() > 0 ? 1 : 0;
}

void Console::Execute(const std::string& line) {
    const std::string text = Trimmed(line);
    if (text.empty() || text[0] == '#') return;
    const std::string name = SplitWords(text, 1)[0];
    const ConsoleCommand* command = FindCommand(name);
    if (command == nullptr) {
        StartCommand();
        Fail("unknown command '" + name + "'; type help for the commands");
        return;
    }
    // An expectation checks the command before it, so it forgets nothing.
    if (command->run != &Console::Expect) StartCommand();
    Args args = SplitWords(text, command->words + 1);
    args.erase(args.begin());
    const bool missing = args.size() < command->words + 1;
    const bool rest = !args.back().empty();
    if (missing || (command->rest == ConsoleCommand::NoRest && rest) ||
        (command->rest == ConsoleCommand::RestRequired && !rest)) {
        const std::string message = std::string(missing || !rest ? "too few" : "too many") + " words for " +
                                    command->name + "; usage: " + command->usage;
        if (command->run == &Console::Expect) {
            ExpectFailed(args.front(), message);
        } else {
            Fail(message);
        }
        return;
    }
    try {
        (this->*command->run)(args);
    } catch (const oxdmException& fault) {
        Fail(fault.Message().str());
    } catch (const CString& fault) {
        Fail(fault.str());
    }
    if (command->redraw && status_ != "error") {
        screen_.ScrollToFocus();
        PrintWindow();
    }
}

void Console::StartCommand() {
    status_.clear();
    errors_.clear();
    presenter_.Forget();
    screen_.CurrentWatch().Reset();
}

void Console::Done(const std::string& status) {
    status_ = status;
    std::printf("-- %s\n", status.c_str());
}

void Console::Fail(const std::string& message) {
    status_ = "error";
    errors_.push_back(message);
    std::printf("error: line %d of %s: %s\n", input_.LineNumber(), input_.Name().c_str(), message.c_str());
}

void Console::MoveDone() { Done(screen_.CurrentWatch().FocusMoves() > 0 ? "moved" : "stayed"); }

short Console::Column(const std::string& name) {
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    const short col = FindColumn(buffer, name);
    if (col >= 0) return col;
    std::string names;
    for (short shown : ShownColumns(buffer)) names += (names.empty() ? "" : ", ") + ColumnName(buffer, shown);
    Fail("no column '" + name + "' in " + buffer.NodeLabel().str() + "; its columns are " + names);
    return -1;
}

void Console::PrintWindow() const { std::fputs(WindowTable(screen_.Current()).c_str(), stdout); }

void Console::Buffer(const Args& args) {
    if (!screen_.Switch(args[0])) {
        Fail("no buffer '" + args[0] + "'; the buffers are " + screen_.BufferNames());
        return;
    }
    Done("switched");
}

void Console::Show(const Args&) { Done("shown"); }

void Console::Audit(const Args&) {
    std::vector<std::string> lines;
    std::string error;
    if (!ReadAuditLines(screen_.RecordPath(), lines, error)) {
        Fail(error);
        return;
    }
    for (const std::string& line : lines) std::printf("  %s\n", line.c_str());
    Done(std::to_string(lines.size()) + " entries");
}

void Console::Spawn(const Args& args) {
    std::filesystem::path script(args.back());
    if (script.is_relative()) script = std::filesystem::path(setting_.scriptDir) / script;
    std::fflush(stdout);
    std::string error;
    const int code = RunChildConsole({"--data", setting_.dataDir, "--window", std::to_string(setting_.windowRows),
                                      "--script", script.string(), "--no-report"},
                                     error);
    if (code < 0) {
        Fail(error);
        return;
    }
    Done(code == 0 ? "done" : "failed (exit " + std::to_string(code) + ")");
}

void Console::Help(const Args& args) {
    if (Lower(args.back()) == "expect") {
        std::fputs(ExpectHelp(), stdout);
    } else if (!args.back().empty()) {
        Fail("help knows only 'expect'; type help for the commands");
        return;
    } else {
        for (const ConsoleCommand& command : Commands()) {
            const std::string alias = *command.alias ? std::string(" (or ") + command.alias + ")" : "";
            std::printf("  %-22s %s%s\n", command.usage, command.help, alias.c_str());
        }
        std::puts("  Lines starting with # are comments. A question is answered by the next line (yes, no, ok, ...).");
    }
    Done("helped");
}

void Console::Quit(const Args&) {
    const std::string changed = screen_.FirstChangedBuffer();
    if (!changed.empty()) {
        Fail("the focus row of " + changed + " has unsaved changes; save or revert them first");
        return;
    }
    stop_ = true;
    Done("quit");
}
