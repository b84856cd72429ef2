#include "oxdm/cursor/objects/type_converters.h"

#include <cmath>

#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/numeric_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

namespace {

// Days from 1970-01-01 of a civil date (proleptic Gregorian).
long DaysFromCivil(int y, int m, int d) {
    y -= m <= 2;
    const long era = (y >= 0 ? y : y - 399) / 400;
    const long yoe = y - era * 400;
    const long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

void CivilFromDays(long z, int* y, int* m, int* d) {
    z += 719468;
    const long era = (z >= 0 ? z : z - 146096) / 146097;
    const long doe = z - era * 146097;
    const long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const long mp = (5 * doy + 2) / 153;
    *d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    *m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    *y = static_cast<int>(yoe + era * 400 + (*m <= 2));
}

const long kSerialEpoch = DaysFromCivil(1899, 12, 30);

// The number a numeric value holds, from either numeric class.
bool NumberOf(const oxData* value, double* out) {
    if (const auto* d = dynamic_cast<const oxDouble*>(value)) *out = d->GetVal();
    else if (const auto* n = dynamic_cast<const oxNumeric*>(value)) *out = n->GetVal();
    else return false;
    return true;
}

// `out` takes `value` when it is not null, else the null of its class.
bool Assign(oxData* out, const oxData& value) { return out->SetVal(value); }

}  // namespace

double PoDateSerial(int year, int month, int day) {
    return static_cast<double>(DaysFromCivil(year, month, day) - kSerialEpoch);
}

void PoSerialDate(double serial, int* year, int* month, int* day) {
    CivilFromDays(static_cast<long>(std::floor(serial)) + kSerialEpoch, year, month, day);
}

short oxPOTypeConverters::ChooseOXType(int type) {
    switch (type) {
        case POTypeText: return XIO_ALPHA;
        case POTypeLong:
        case POTypeDouble: return XIO_NUMERIC;
        case POTypeBool: return XIO_BOOLEAN;
        case POTypeDate: return XIO_DATE;
        case POTypeTime: return XIO_TIME;
        case POTypePhone: return XIO_PHONE;
        case POTypeSSNum: return XIO_SSNUM;
        case POTypeChoice: return XIO_CHOICE;
        default: return -1;
    }
}

bool oxPOTypeConverters::OXDataToVariant(int type, const oxData* value, ATL::CComVariant& out) {
    if (value == nullptr) return false;
    if (value->IsNull() && type != POTypeBool && type != POTypeLong && type != POTypeDouble) {
        out.Clear();
        return true;
    }
    double number = 0;
    switch (type) {
        case POTypeText:
        case POTypePhone:
            if (const auto* text = dynamic_cast<const oxString*>(value)) {
                out = ATL::CComVariant(text->GetVal());
                return true;
            }
            return false;
        case POTypeLong:
            if (!NumberOf(value, &number)) return false;
            out = ATL::CComVariant(static_cast<std::int32_t>(std::lround(number)));
            return true;
        case POTypeDouble:
            if (!NumberOf(value, &number)) return false;
            out = ATL::CComVariant(number);
            return true;
        case POTypeBool:
            if (const auto* flag = dynamic_cast<const oxBool*>(value)) {
                out = ATL::CComVariant(flag->GetVal());
                return true;
            }
            return false;
        case POTypeDate:
            if (const auto* date = dynamic_cast<const oxDate*>(value)) {
                const x_date_def rec = date->Record();
                out = ATL::CComVariant(PoDateSerial(rec.year, rec.month, rec.day == 0 ? 1 : rec.day), VT_DATE);
                return true;
            }
            return false;
        case POTypeTime:
            if (const auto* time = dynamic_cast<const oxTime*>(value)) {
                const double seconds = time->Hour() * 3600.0 + time->Minute() * 60.0 + time->Second();
                out = ATL::CComVariant(seconds / 86400.0, VT_DATE);
                return true;
            }
            return false;
        case POTypeSSNum:
            if (const auto* ssn = dynamic_cast<const oxSSNum*>(value)) {
                out = ATL::CComVariant(static_cast<std::int32_t>(ssn->GetVal()));
                return true;
            }
            return false;
        case POTypeChoice:
            if (const auto* choice = dynamic_cast<const oxChoice*>(value)) {
                out = ATL::CComVariant(static_cast<std::int32_t>(choice->GetVal()));
                return true;
            }
            return false;
        default: return false;
    }
}

bool oxPOTypeConverters::VariantToOXData(int type, const ATL::CComVariant& value, oxData* out) {
    if (out == nullptr || ChooseOXType(type) < 0) return false;
    if (value.IsEmpty()) return out->SetVal(CString(), nullptr);
    double number = 0;
    switch (type) {
        case POTypeText:
        case POTypePhone:
            return value.vt == VT_BSTR && Assign(out, oxAlpha(value.Text().c_str()));
        case POTypeLong:
        case POTypeDouble:
            if (!value.AsNumber(&number)) return false;
            if (auto* d = dynamic_cast<oxDouble*>(out)) {
                d->SetVal(number);
                return true;
            }
            if (auto* n = dynamic_cast<oxNumeric*>(out)) return n->SetVal(number);
            return false;
        case POTypeBool:
            return value.vt == VT_BOOL && Assign(out, oxBool(value.Bool()));
        case POTypeDate: {
            if (value.vt != VT_DATE) return false;
            int year = 0, month = 0, day = 0;
            PoSerialDate(value.Double(), &year, &month, &day);
            if (year < 1 || year > 9999) return false;
            return Assign(out, oxDate(static_cast<short>(month), static_cast<short>(day), static_cast<short>(year)));
        }
        case POTypeTime: {
            if (value.vt != VT_DATE) return false;
            const double fraction = value.Double() - std::floor(value.Double());
            const long seconds = std::lround(fraction * 86400.0) % 86400;
            return Assign(out, oxTime(static_cast<short>(seconds / 3600), static_cast<short>(seconds / 60 % 60),
                                      static_cast<short>(seconds % 60)));
        }
        case POTypeSSNum:
            if (value.vt != VT_I4 || value.Long() < 0 || static_cast<unsigned long>(value.Long()) > oxSSNum::kMax)
                return false;
            return Assign(out, oxSSNum(static_cast<unsigned long>(value.Long())));
        case POTypeChoice:
            if (value.vt != VT_I4 || value.Long() < 0 || value.Long() > 0xFFFF) return false;
            return Assign(out, oxChoice(static_cast<unsigned short>(value.Long())));
        default: return false;
    }
}
