#pragma once
// oxTime: a time of day to the second, null by default.
//
// Text is xd_alpha_time's option 0 ("9:05 AM", "9:05:30 PM") and entry is
// xd_parse_time's (date_text.h). A null time is shown as "" and sorts before
// every time. Conversions: it takes another oxTime or parses a text value.

#include "oxdm/common/values/data.h"
#include "oxdm/common/values/date_text.h"

class oxTime : public oxData {
public:
    oxTime();  // null
    // REQUIRES: 0 <= hour <= 23, 0 <= minute <= 59, 0 <= second <= 59.
    oxTime(short hour, short minute, short second = 0);
    ~oxTime() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    bool Gt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    // Now (local time).
    const oxTime& SetCurrent();
    short Hour() const { return rec_.hour; }
    short Minute() const { return rec_.minute; }
    short Second() const { return rec_.second; }
    // The time record: hour -1 when null.
    const x_time_def& Record() const { return rec_; }

private:
    // Seconds since midnight; -1 when null, so null sorts first.
    long Seconds() const;
    // Takes rec if it is the null time or a valid time.
    bool TakeRecord(const x_time_def& rec);

    // rec_.hour is -1 (null; minute and second 0) or 0..23 with minute and
    // second 0..59.
    x_time_def rec_;
};
