#include "oxdm/common/values/time_value.h"

#include <cassert>
#include <ctime>

#include "oxdm/common/values/xval.h"

oxTime::oxTime() : rec_{-1, 0, 0} {}

oxTime::oxTime(short hour, short minute, short second) : rec_{hour, minute, second} {
    assert(hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59);
}

oxTime::~oxTime() = default;

long oxTime::Seconds() const {
    return rec_.hour < 0 ? -1 : (rec_.hour * 60L + rec_.minute) * 60L + rec_.second;
}

bool oxTime::TakeRecord(const x_time_def& rec) {
    if (rec.hour < 0) {
        rec_ = x_time_def{-1, 0, 0};
        return true;
    }
    if (rec.hour > 23 || rec.minute < 0 || rec.minute > 59 || rec.second < 0 || rec.second > 59) return false;
    rec_ = rec;
    return true;
}

void oxTime::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_TIME, IsNull());
    xval.Edit().time = rec_;
    xval.SetText(Format());
}

bool oxTime::IsNull() const { return rec_.hour < 0; }

namespace {

// False in *comparable when other is not a time.
int CompareTimes(long seconds, const oxData& other, bool* comparable) {
    const auto* time = dynamic_cast<const oxTime*>(&other);
    *comparable = time != nullptr;
    if (time == nullptr) return 0;
    const long theirs = time->IsNull() ? -1 : (time->Hour() * 60L + time->Minute()) * 60L + time->Second();
    return seconds < theirs ? -1 : (seconds > theirs ? 1 : 0);
}

}  // namespace

bool oxTime::Eq(const oxData& other) const {
    bool comparable = false;
    const int order = CompareTimes(Seconds(), other, &comparable);
    return comparable && order == 0;
}

bool oxTime::Lt(const oxData& other) const {
    bool comparable = false;
    const int order = CompareTimes(Seconds(), other, &comparable);
    return comparable && order < 0;
}

bool oxTime::Gt(const oxData& other) const {
    bool comparable = false;
    const int order = CompareTimes(Seconds(), other, &comparable);
    return comparable && order > 0;
}

oxData* oxTime::Clone() const { return new oxTime(*this); }

CString oxTime::Format() const {
    char text[XD_TIME_TEXT_SIZE];
    xd_alpha_time(&rec_, text, 0);
    return CString(text);
}

bool oxTime::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    x_time_def rec{-1, 0, 0};
    return xd_parse_time(plain, &rec) && TakeRecord(rec);
}

bool oxTime::SetVal(const oxioXval& xval) {
    switch (xval.Kind()) {
        case XV_TEXT:
            return SetVal(xval.Text(), nullptr);
        case XV_NONE:
        case XV_TIME:
            return TakeRecord(xval.NullFlag() ? x_time_def{-1, 0, 0} : xval.GetXval().time);
        default:
            return false;
    }
}

const oxTime& oxTime::SetCurrent() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    rec_ = x_time_def{static_cast<short>(local.tm_hour), static_cast<short>(local.tm_min),
                      static_cast<short>(local.tm_sec > 59 ? 59 : local.tm_sec)};
    return *this;
}
