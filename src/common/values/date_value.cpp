#include "oxdm/common/values/date_value.h"

#include <cassert>

#include "calendar.h"
#include "oxdm/common/values/xval.h"

using oxvalues::CivilFromDays;
using oxvalues::DaysFromCivil;

namespace {

// Month-and-day values count within year 0, a leap year of 366 days.
constexpr long kLeapYearDays = 366;

long FloorMod(long a, long b) { return ((a % b) + b) % b; }

}  // namespace

oxDate::oxDate() : parts_(XD_FULL_DATE) {}

oxDate::oxDate(xd_date_parts parts) : parts_(parts) {}

oxDate::oxDate(xd_date_parts parts, const x_date_def& rec) : parts_(parts) {
    const bool taken = TakeRecord(rec);
    assert(taken);
    (void)taken;
}

oxDate::oxDate(short month, short day, short year)
    : parts_(XD_FULL_DATE), null_(false), year_(year), month_(month), day_(day) {
    Normalize();
    assert(year_ >= 1 && year_ <= 9999);
}

oxDate::~oxDate() = default;

x_date_def oxDate::Record() const {
    if (null_) return x_date_def{0, 0, 0};
    return x_date_def{year_, month_, static_cast<short>(parts_ == XD_MONTH_YEAR ? 0 : day_)};
}

bool oxDate::TakeRecord(const x_date_def& rec) {
    if (!xd_valid_date(&rec)) return false;
    if (rec.year == 0 && rec.month == 0 && rec.day == 0) {
        null_ = true;
        year_ = month_ = day_ = 0;
        return true;
    }
    const bool monthDay = rec.year == 0;
    const bool monthYear = rec.day == 0;
    if ((monthDay && parts_ != XD_MONTH_DAY) || (monthYear && parts_ != XD_MONTH_YEAR)) return false;
    null_ = false;
    month_ = rec.month;
    year_ = parts_ == XD_MONTH_DAY ? 0 : rec.year;
    day_ = parts_ == XD_MONTH_YEAR ? 1 : rec.day;
    return true;
}

long oxDate::DayNumber() const { return DaysFromCivil(year_, month_, day_); }

void oxDate::SetFromDayNumber(long days) {
    long y = 0, m = 0, d = 0;
    CivilFromDays(days, &y, &m, &d);
    year_ = static_cast<short>(y);
    month_ = static_cast<short>(m);
    day_ = static_cast<short>(d);
}

void oxDate::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_DATE, null_);
    xval.Edit().date = Record();
    xval.SetText(Format());
}

bool oxDate::IsNull() const { return null_; }

namespace {

// Where a date value stands in order: nulls first, then by day number.
// False in *comparable when other is not a date.
int CompareDates(const oxDate& a, const oxData& other, bool* comparable) {
    const auto* b = dynamic_cast<const oxDate*>(&other);
    *comparable = b != nullptr;
    if (b == nullptr) return 0;
    if (a.IsNull() || b->IsNull()) return static_cast<int>(b->IsNull()) - static_cast<int>(a.IsNull());
    const long x = DaysFromCivil(a.Year(), a.Month(), a.Day());
    const long y = DaysFromCivil(b->Year(), b->Month(), b->Day());
    return x < y ? -1 : (x > y ? 1 : 0);
}

}  // namespace

bool oxDate::Eq(const oxData& other) const {
    bool comparable = false;
    const int order = CompareDates(*this, other, &comparable);
    return comparable && order == 0;
}

bool oxDate::Lt(const oxData& other) const {
    bool comparable = false;
    const int order = CompareDates(*this, other, &comparable);
    return comparable && order < 0;
}

bool oxDate::Gt(const oxData& other) const {
    bool comparable = false;
    const int order = CompareDates(*this, other, &comparable);
    return comparable && order > 0;
}

oxData* oxDate::Clone() const { return new oxDate(*this); }

CString oxDate::Format() const {
    char text[XD_DATE_TEXT_SIZE];
    const x_date_def rec = Record();
    xd_alpha_date(&rec, text, Numeric, FourDigitYear, 0, false);
    return CString(text);
}

CString oxDate::Format(FormatOption option, YearOption year, bool dayOfWeek) {
    char text[XD_DATE_TEXT_SIZE];
    const x_date_def rec = Record();
    xd_alpha_date(&rec, text, static_cast<short>(option), static_cast<short>(year), 0, dayOfWeek);
    return CString(text);
}

bool oxDate::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    x_date_def rec{0, 0, 0};
    return xd_parse_date(plain, &rec, parts_) && TakeRecord(rec);
}

bool oxDate::SetVal(const oxioXval& xval) {
    switch (xval.Kind()) {
        case XV_TEXT:
            return SetVal(xval.Text(), nullptr);
        case XV_NONE:
        case XV_DATE:
            return TakeRecord(xval.NullFlag() ? x_date_def{0, 0, 0} : xval.GetXval().date);
        default:
            return false;
    }
}

void oxDate::Normalize() {
    if (null_) return;
    switch (parts_) {
        case XD_FULL_DATE:
            SetFromDayNumber(DaysFromCivil(year_, month_, day_));
            break;
        case XD_MONTH_YEAR:
            SetFromDayNumber(DaysFromCivil(year_, month_, 1));
            break;
        case XD_MONTH_DAY: {
            const long start = DaysFromCivil(0, 1, 1);
            SetFromDayNumber(start + FloorMod(DaysFromCivil(0, month_, day_) - start, kLeapYearDays));
            break;
        }
    }
}

const oxDate& oxDate::Offset(short days, short months) {
    if (null_) return *this;
    const oxDate before(*this);
    // Months first, keeping the day or cutting it to the new month's end.
    const long monthIndex = static_cast<long>(month_) - 1 + months;
    const long yearShift = monthIndex >= 0 ? monthIndex / 12 : -((11 - monthIndex) / 12);
    const long year = parts_ == XD_MONTH_DAY ? 0 : year_ + yearShift;
    if (year < 0 || year > 9999 || (parts_ != XD_MONTH_DAY && year < 1)) return *this;
    year_ = static_cast<short>(year);
    month_ = static_cast<short>(monthIndex - 12 * yearShift + 1);
    if (day_ > xd_month_length(month_, year_)) day_ = xd_month_length(month_, year_);
    if (parts_ == XD_MONTH_YEAR) return *this;

    if (parts_ == XD_MONTH_DAY) {
        const long start = DaysFromCivil(0, 1, 1);
        SetFromDayNumber(start + FloorMod(DayNumber() - start + days, kLeapYearDays));
        return *this;
    }
    SetFromDayNumber(DayNumber() + days);
    if (year_ < 1 || year_ > 9999) *this = before;
    return *this;
}

const oxDate& oxDate::SetCurrent() {
    long y = 0, m = 0, d = 0;
    oxvalues::Today(&y, &m, &d);
    null_ = false;
    year_ = parts_ == XD_MONTH_DAY ? 0 : static_cast<short>(y);
    month_ = static_cast<short>(m);
    day_ = parts_ == XD_MONTH_YEAR ? 1 : static_cast<short>(d);
    return *this;
}

unsigned short oxDate::Month() const { return static_cast<unsigned short>(month_); }
unsigned short oxDate::Day() const { return static_cast<unsigned short>(day_); }
unsigned short oxDate::Year() const { return static_cast<unsigned short>(year_); }

unsigned short oxDate::MonthLength() const {
    return null_ ? 0 : static_cast<unsigned short>(xd_month_length(month_, year_));
}

oxDate::DayOfWeek oxDate::WeekDayOf() const {
    if (null_ || parts_ != XD_FULL_DATE) return NoDay;
    return static_cast<DayOfWeek>(oxvalues::WeekDayOfDays(DayNumber()));
}

oxDate::DayOfWeek oxDate::WeekDay() { return WeekDayOf(); }

void oxDate::AlphaDayOfWeek(CString& text) const {
    const DayOfWeek day = WeekDayOf();
    text = day == NoDay ? CString() : CString(oxvalues::DayName(day));
}

short oxDate::Between(const oxDate& first, const oxDate& last) const {
    if (null_ || first.IsNull() || last.IsNull()) return 0;
    const bool inOrder = !last.Lt(first);
    const oxDate& low = inOrder ? first : last;
    const oxDate& high = inOrder ? last : first;
    return !Lt(low) && !Gt(high) ? 1 : 0;
}
