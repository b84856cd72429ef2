#pragma once
// Styles and answers of message boxes, with the values that the library's
// callers pass and test (0x40 information, 0x24 yes/no with a question mark,
// answer 6 for yes).

namespace oxdmBox {

// Buttons: the low four bits of a style.
inline constexpr unsigned OK = 0x0;
inline constexpr unsigned OKCancel = 0x1;
inline constexpr unsigned AbortRetryIgnore = 0x2;
inline constexpr unsigned YesNoCancel = 0x3;
inline constexpr unsigned YesNo = 0x4;
inline constexpr unsigned RetryCancel = 0x5;
inline constexpr unsigned ButtonMask = 0xF;

// Icons.
inline constexpr unsigned IconStop = 0x10;
inline constexpr unsigned IconQuestion = 0x20;
inline constexpr unsigned IconExclamation = 0x30;
inline constexpr unsigned IconInformation = 0x40;

// Default button: the first unless one of these says otherwise.
inline constexpr unsigned DefButton2 = 0x100;
inline constexpr unsigned DefButton3 = 0x200;
inline constexpr unsigned DefButtonMask = 0xF00;

// Answers.
inline constexpr int IdOK = 1;
inline constexpr int IdCancel = 2;
inline constexpr int IdAbort = 3;
inline constexpr int IdRetry = 4;
inline constexpr int IdIgnore = 5;
inline constexpr int IdYes = 6;
inline constexpr int IdNo = 7;

// The answer of the default button of style: what a box answers when the
// operator just presses Enter. Unknown button sets answer OK.
int DefaultAnswer(unsigned style);

}  // namespace oxdmBox
