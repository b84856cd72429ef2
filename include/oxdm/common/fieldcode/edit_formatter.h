#pragma once
// oxEditFormatter: the text logic behind an edit field, with no window.
//
// A formatter answers four questions about the text of one field:
//   IsValid    on leaving the field: is the text acceptable? It may rewrite
//              the text into its display form, and on refusal it gives the
//              message for the operator and the selection to put the caret at;
//   Format     the display form of a stored or typed text;
//   Unformat   the storage form of a display text;
//   KeyPressed a key typed with the edit's text and selection: the new text
//              and caret, or a refusal that leaves both as they were.
// None of them throws or fails on any text: each answers for every input.
//
// Through oxcFormatter a value parses typed text with any formatter:
// StorageText is IsValid followed by Unformat.

#include "oxdm/base/cstring.h"
#include "oxdm/common/values/formatter.h"

// What IsValid tells about a refused text.
struct oxEditValidateInfo {
    CString message;  // the whole sentence for the operator; empty when none
    int selStart = 0;  // the selection to show: first character selected,
    int selEnd = 0;    // and one past the last (equal: a caret)
};

// The keys other than printable characters that KeyPressed takes.
enum : char {
    OX_KEY_BACKSPACE = '\b',  // removes the selection, or the character before the caret
    OX_KEY_DELETE = 0x7f,     // removes the selection, or the character after the caret
};

// An edit's text and selection, handed to KeyPressed and updated by it.
struct oxEditState {
    CString text;
    int selStart = 0;  // any values are taken; KeyPressed orders them and
    int selEnd = 0;    // keeps them within the text
};

class oxEditFormatter : public oxcFormatter {
public:
    ~oxEditFormatter() override;

    // Checks text on leaving the field. On success text may be rewritten (to
    // its display form) and true is answered. On refusal text is left as the
    // operator typed it, and, when info is given, info->message and the
    // selection say why and where.
    virtual bool IsValid(CString& text, oxEditValidateInfo* info) const = 0;
    // A typed key: on acceptance state holds the new text with the caret
    // (an empty selection) behind what was typed, and true is answered;
    // a refused key answers false and leaves state as it was.
    virtual bool KeyPressed(char key, oxEditState& state) const;
    // The display form of text; a text that is not a value of this kind is
    // answered as it is.
    virtual CString Format(const CString& text) const;
    // The storage form of text; a text that is not a value of this kind is
    // answered as it is.
    virtual CString Unformat(const CString& text) const;

    // IsValid on a copy of typed, then Unformat.
    bool StorageText(const CString& typed, CString* storage) const override;

protected:
    oxEditFormatter() = default;

    // The character that a typed key inserts at caret (after the selection
    // was removed from text), or 0 to refuse the key. Default: printable
    // characters as they are.
    virtual char TranslateKey(char key, const CString& text, int caret) const;
    // Whether text, the result of an insertion, may stand while typing: a
    // possible beginning of an acceptable entry. Default: always.
    virtual bool AcceptsPartial(const CString& text) const;

    // "Incorrect <what> format. <fault> Correct format is <mask>." into
    // info->message, with the caret at caret; nothing without info.
    static void Refuse(oxEditValidateInfo* info, const char* what, const char* fault,
                       const char* mask, int caret);
};
