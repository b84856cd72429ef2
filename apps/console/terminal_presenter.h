#pragma once
// TerminalPresenter: the library's questions, status texts and wait states
// on the terminal. A box is printed with its title and text; a box with
// more than one button is answered by the next input line ("yes", "no",
// "ok", "cancel", ... or their first letters, in any case). What a command
// has been told is kept until the next command starts, so that a script
// can check it.
//
// A line that is no answer to the box is handled as its source allows: a
// person is asked again; a script keeps the line for the next command and
// the box takes its default button, as Enter would, so that a missing
// answer loses no command; it is counted, and a script with one fails.
//
// Ownership: input_ is not owned and must outlive the presenter.

#include <string>
#include <vector>

#include "oxdm/common/shell/presenter.h"

class LineInput;

class TerminalPresenter : public oxdmPresenter {
public:
    explicit TerminalPresenter(LineInput& input) : input_(input) {}

    int MessageBox(const CString& text, const CString& title, unsigned style, unsigned helpContext) override;
    void DisplayStatus(const CString& text, bool beep) override;
    void StartWait(const CString& text) override;
    void StopWait() override;

    // Every box text shown since the last Forget, in order.
    const std::vector<std::string>& BoxTexts() const { return boxTexts_; }
    void Forget() { boxTexts_.clear(); }
    // Questions of a script that no line answered.
    int Unanswered() const { return unanswered_; }

private:
    // boxTexts_ holds the boxes since the last Forget; unanswered_ counts
    // from the start.
    LineInput& input_;
    std::vector<std::string> boxTexts_;
    int unanswered_ = 0;
};

// The answer (oxdmBox::Id*) that `word` gives to a box of `style`, or 0
// when it names none of the box's buttons. Case is ignored; a word may be
// cut to its first letters as long as it names one button only.
int AnswerForWord(unsigned style, const std::string& word);
// The buttons of `style` as the words that answer them ("yes/no").
std::string ButtonWords(unsigned style);
