#pragma once
// Console: the command loop of oxdm-console. It reads a line, runs the
// command it names against the sales screen, prints what the screen shows
// and remembers how the command went (a status word and the messages the
// operator was given), which `expect` lines check.
//
// Invariants: status_ and errors_ describe the last command that was not an
// `expect` line; presenter_ holds the boxes of that same command.
// Ownership: screen_, input_ and presenter_ are not owned and outlive the
// console. A user's mistake is a message and the status "error"; nothing
// in the loop throws.

#include <string>
#include <vector>

class LineInput;
class SalesScreen;
class TerminalPresenter;
struct ConsoleCommand;

class Console {
public:
    // `dataDir` and `windowRows` are handed to the processes that `spawn`
    // starts; `scriptDir` is where a relative path in a command starts.
    struct Setting {
        std::string dataDir;
        short windowRows = 8;
        std::string scriptDir;
    };
    // The arguments a command was given: the words after its name (as many
    // as it asks for) and the rest of the line as a last element.
    using Args = std::vector<std::string>;

    Console(SalesScreen& screen, LineInput& input, TerminalPresenter& presenter, Setting setting);

    // Runs commands until `quit` or the end of the input. Answers the
    // program's exit status: 0, or 1 when an expectation failed or a
    // question of the library went unanswered.
    int Run();

private:
    // Every command, in the order help lists them (console_commands.cpp).
    static const std::vector<ConsoleCommand>& Commands();
    static const ConsoleCommand* FindCommand(const std::string& name);

    // The commands, in console_moves.cpp, console_edits.cpp and console.cpp.
    void First(const Args&);
    void Prev(const Args&);
    void Next(const Args&);
    void Last(const Args&);
    void PageUp(const Args&);
    void PageDown(const Args&);
    void Percent(const Args&);
    void Find(const Args&);
    void Prefix(const Args&);
    void Buffer(const Args&);
    void Show(const Args&);
    void Audit(const Args&);
    void Set(const Args&);
    void Save(const Args&);
    void Revert(const Args&);
    void Delete(const Args&);
    void Append(const Args&);
    void Reserve(const Args&);
    void Spawn(const Args&);
    void Expect(const Args&);
    void Help(const Args&);
    void Quit(const Args&);

    // Runs one line: a command, a check, a comment or nothing.
    void Execute(const std::string& line);
    // Forgets how the last command went, before the next one runs.
    void StartCommand();
    // Ends a command that went as the screen allowed with `status`.
    void Done(const std::string& status);
    // Ends a command that could not run: prints `message` with where the
    // line came from, and the status is "error".
    void Fail(const std::string& message);
    // Counts a failed check and prints the line, the check and what was
    // seen instead.
    void ExpectFailed(const std::string& check, const std::string& seen);
    // The status of a move after it: "moved" when the current buffer's
    // focus moved, else "stayed".
    void MoveDone();
    // The index of `name` in the current buffer; -1 after a Fail.
    short Column(const std::string& name);
    void PrintWindow() const;

    SalesScreen& screen_;
    LineInput& input_;
    TerminalPresenter& presenter_;
    const Setting setting_;
    std::string status_;
    std::vector<std::string> errors_;
    int failures_ = 0;
    int met_ = 0;
    bool stop_ = false;
};
