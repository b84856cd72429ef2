#include "terminal_presenter.h"

#include <cstdio>
#include <optional>

#include "line_input.h"
#include "oxdm/common/shell/box_styles.h"
#include "text_words.h"

namespace {

struct Button {
    const char* word;
    int answer;
};

// The buttons of a style's low four bits, in the order a box shows them.
std::vector<Button> Buttons(unsigned style) {
    switch (style & oxdmBox::ButtonMask) {
        case oxdmBox::OKCancel:
            return {{"ok", oxdmBox::IdOK}, {"cancel", oxdmBox::IdCancel}};
        case oxdmBox::AbortRetryIgnore:
            return {{"abort", oxdmBox::IdAbort}, {"retry", oxdmBox::IdRetry}, {"ignore", oxdmBox::IdIgnore}};
        case oxdmBox::YesNoCancel:
            return {{"yes", oxdmBox::IdYes}, {"no", oxdmBox::IdNo}, {"cancel", oxdmBox::IdCancel}};
        case oxdmBox::YesNo:
            return {{"yes", oxdmBox::IdYes}, {"no", oxdmBox::IdNo}};
        case oxdmBox::RetryCancel:
            return {{"retry", oxdmBox::IdRetry}, {"cancel", oxdmBox::IdCancel}};
        default:
            return {{"ok", oxdmBox::IdOK}};
    }
}

const char* WordForAnswer(unsigned style, int answer) {
    for (const Button& button : Buttons(style))
        if (button.answer == answer) return button.word;
    return "ok";
}

// The box's text with its line breaks ("\r" in the library's texts) as
// lines of the terminal, each indented.
std::string Indented(const std::string& text) {
    std::string out = "  ";
    for (char c : text) {
        if (c == '\r' || c == '\n') {
            out += "\n  ";
        } else {
            out += c;
        }
    }
    return out;
}

}  // namespace

int AnswerForWord(unsigned style, const std::string& word) {
    const std::string wanted = Lower(Trimmed(word));
    if (wanted.empty()) return 0;
    int found = 0;
    for (const Button& button : Buttons(style)) {
        const std::string name = button.word;
        if (name == wanted) return button.answer;
        if (name.compare(0, wanted.size(), wanted) == 0) {
            if (found != 0) return 0;  // names two buttons
            found = button.answer;
        }
    }
    return found;
}

std::string ButtonWords(unsigned style) {
    std::string words;
    for (const Button& button : Buttons(style)) {
        if (!words.empty()) words += '/';
        words += button.word;
    }
    return words;
}

int TerminalPresenter::MessageBox(const CString& text, const CString& title, unsigned style, unsigned) {
    boxTexts_.push_back(text.str());
    std::printf("[%s]\n%s\n", title.c_str(), Indented(text.str()).c_str());
    if (Buttons(style).size() == 1) return Buttons(style)[0].answer;
    const int fallback = oxdmBox::DefaultAnswer(style);
    for (;;) {
        std::printf("  answer %s? ", ButtonWords(style).c_str());
        std::fflush(stdout);
        std::optional<std::string> line = input_.Next(false);
        if (!line) {
            ++unanswered_;
            std::printf("\nFAILED: the input ended before the question above was answered (took %s)\n",
                        WordForAnswer(style, fallback));
            return fallback;
        }
        if (const int answer = AnswerForWord(style, *line)) return answer;
        if (input_.Interactive()) {
            std::printf("  please answer %s\n", ButtonWords(style).c_str());
            continue;
        }
        ++unanswered_;
        std::printf("FAILED: line %d of %s answers no question; the one above took %s\n", input_.LineNumber(),
                    input_.Name().c_str(), WordForAnswer(style, fallback));
        input_.PutBack(*line);
        return fallback;
    }
}

void TerminalPresenter::DisplayStatus(const CString& text, bool beep) {
    if (text.IsEmpty()) return;
    std::printf("status: %s%s\n", text.c_str(), beep ? " (beep)" : "");
}

void TerminalPresenter::StartWait(const CString&) {}

void TerminalPresenter::StopWait() {}
