#include <cctype>

#include "oxdm/common/auditlog/audit_log.h"

namespace {

// Reads `count` digits at `at` into `value`; false when any is not a digit.
bool Digits(const CString& text, int at, int count, int& value) {
    value = 0;
    for (int i = at; i < at + count; ++i) {
        if (i >= text.GetLength() || !std::isdigit(static_cast<unsigned char>(text[i]))) return false;
        value = value * 10 + (text[i] - '0');
    }
    return true;
}

}  // namespace

bool oxParseAuditTime(const CString& text, bool upper, CString& normalized, CString& error) {
    const int length = text.GetLength();
    int year = 0, month = 0, day = 0, hour = upper ? 23 : 0, minute = upper ? 59 : 0, second = upper ? 59 : 0;
    bool ok = (length == 10 || length == 16 || length == 19) && Digits(text, 0, 4, year) && text[4] == '-' &&
              Digits(text, 5, 2, month) && text[7] == '-' && Digits(text, 8, 2, day);
    if (ok && length > 10)
        ok = (text[10] == ' ' || text[10] == 'T') && Digits(text, 11, 2, hour) && text[13] == ':' &&
             Digits(text, 14, 2, minute);
    if (ok && length > 16) ok = text[16] == ':' && Digits(text, 17, 2, second);
    if (!ok) {
        error = "'" + text + "' is not a time: write yyyy-mm-dd, yyyy-mm-dd hh:mm or yyyy-mm-dd hh:mm:ss.";
        return false;
    }
    if (month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 || minute > 59 || second > 59) {
        error = "'" + text + "' is not a time: a month, day, hour, minute or second is out of range.";
        return false;
    }
    normalized.Format("%04d-%02d-%02d %02d:%02d:%02d", year, month, day, hour, minute, second);
    return true;
}
