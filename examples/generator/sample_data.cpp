#include "sample_data.h"

#include <cstdio>
#include <iterator>

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "sample_plan.h"
#include "sample_random.h"

namespace {

// The one seed of the sample: changing it changes every record.
constexpr std::uint64_t kSeed = 0x6F78646D2D6F7264ULL;

enum Table : short { kCustomer = 1, kOrder = 2, kLine = 3 };

const char* const kFirstNames[] = {"Ada",   "Bram",  "Carla", "Dmitri", "Edith", "Farid", "Greta", "Hugo",
                                   "Ines",  "Jonas", "Karin", "Luca",   "Mira",  "Nils",  "Olga",  "Pavel",
                                   "Quinn", "Rosa",  "Sven",  "Tara",   "Umar",  "Vera",  "Wim",   "Yara"};
const char* const kLastNames[] = {"Abernethy", "Blackwood", "Castellano", "Delacroix", "Eriksen",  "Fairweather",
                                  "Gallagher", "Holmqvist", "Ironside",   "Jankowski", "Kowalczyk", "Lindqvist",
                                  "Marchetti", "Nakamura",  "Oyelaran",   "Pemberton", "Quintero",  "Rasmussen",
                                  "Sorensen",  "Thornbury", "Underhill",  "Valentino", "Whitcombe", "Zielinski"};
const char* const kCities[] = {"Aberdeen", "Bergen",   "Cork",     "Dresden",  "Eindhoven", "Faro",    "Graz",
                               "Haarlem",  "Innsbruck", "Jena",    "Kaunas",   "Lyon",      "Malmo",   "Nantes",
                               "Oulu",     "Porto",    "Quimper",  "Riga",     "Salzburg",  "Tartu"};
const char* const kItemGroups[] = {"BOLT", "NUTS", "PIPE", "WIRE", "TAPE", "GLUE",
                                   "SAWS", "DRIL", "PAIN", "LAMP", "FANS", "HOSE"};

template <typename T, size_t N>
const T& Pick(const T (&list)[N], oxSampleRandom& random) {
    return list[random.Between(0, static_cast<long long>(N) - 1)];
}

CString Numbered(char prefix, int digits, long long number) {
    CString text;
    text.Format("%c%0*lld", prefix, digits, number);
    return text;
}

// A date `days` after 01/01/2000.
oxDate DayAfter2000(long long days) {
    oxDate date(1, 1, 2000);
    date.Offset(static_cast<short>(days));
    return date;
}

// One cursor on one table of the sample with the values it writes attached.
// Invariant: every value in the constructor's list is attached to the column
// of its name, or ok_ is false and error_ says which one is missing.
class SampleTable {
public:
    struct Column {
        const char* name;
        oxData* value;
    };

    // REQUIRES: `file` and every value outlive this object.
    SampleTable(const oxioDataFile& file, short table, std::initializer_list<Column> columns)
        : cursor_(file, table, 0), table_(table) {
        for (const Column& column : columns)
            if (ok_ && !cursor_.AttachColumn(column.name, *column.value)) {
                ok_ = false;
                error_.Format("The record file has no field %s in table %d; it is not a file of the ord dictionary.",
                              column.name, table);
            }
    }

    bool Ok(CString& error) const {
        if (!ok_) error = error_;
        return ok_;
    }

    // Whether the table holds no record.
    bool Empty() { return cursor_.FetchFirst(false) != oxioStatus::Success; }

    oxioStatus::Status Insert(const oxAlpha& key, CString& error) {
        oxioStatus::Status status = cursor_.Insert(nullptr);
        if (status != oxioStatus::Success)
            error.Format("The sample record %s of table %d could not be written (status %d).", key.GetVal().c_str(),
                         table_, static_cast<int>(status));
        return status;
    }

private:
    oxioCursor cursor_;
    short table_;
    bool ok_ = true;
    CString error_;
};

// The values of one record of each table, attached to the cursors that write
// them; the writer fills them and inserts.
// Invariant: each value below is attached to its table's cursor for the
// writer's whole life (the tables are declared after the values, so they are
// made after them and go before them); the random sequence is drawn in one
// fixed order of statements, so equal counts give equal records.
class SampleWriter {
public:
    explicit SampleWriter(const oxioDataFile& file)
        : customers_(file, kCustomer,
                     {{"CUSTNO", &custNo_},
                      {"NAME", &name_},
                      {"CITY", &city_},
                      {"STATUS", &status_},
                      {"BALANCE", &balance_},
                      {"SINCE", &since_}}),
          orders_(file, kOrder,
                  {{"ORDNO", &ordNo_}, {"CUSTNO", &ordCustNo_}, {"ODATE", &orderDate_}, {"TOTAL", &total_}}),
          lines_(file, kLine,
                 {{"ORDNO", &lineOrdNo_},
                  {"LINENO", &lineNo_},
                  {"ITEM", &item_},
                  {"QTY", &qty_},
                  {"PRICE", &price_}}) {}

    // The tables are those of "ord" and are empty; else a sentence.
    oxioStatus::Status Check(CString& error) {
        if (!customers_.Ok(error) || !orders_.Ok(error) || !lines_.Ok(error)) return oxioStatus::IncompatibleFile;
        if (!customers_.Empty() || !orders_.Empty() || !lines_.Empty()) {
            error = "The record file already holds customers, orders or lines; sample data go into empty tables.";
            return oxioStatus::FileExists;
        }
        return oxioStatus::Success;
    }

    oxioStatus::Status Write(const oxSampleCounts& counts, CString& error) {
        oxSampleRandom random(kSeed);
        std::vector<long long> ordersOf = oxSplitTotal(counts.orders, counts.customers, counts.orders, random);
        std::vector<long long> linesOf = oxSplitTotal(counts.lines, counts.orders, kSampleMaxLinesPerOrder, random);
        long long order = 0;
        for (long long c = 0; c < counts.customers; ++c) {
            long long sinceDay = random.Between(0, 8000);
            if (auto status = WriteCustomer(c + 1, sinceDay, random, error); status != oxioStatus::Success)
                return status;
            for (long long o = 0; o < ordersOf[c]; ++o, ++order)
                if (auto status = WriteOrder(order + 1, sinceDay, linesOf[order], random, error);
                    status != oxioStatus::Success)
                    return status;
        }
        return oxioStatus::Success;
    }

private:
    oxioStatus::Status WriteCustomer(long long number, long long sinceDay, oxSampleRandom& random, CString& error) {
        custNo_.SetVal(Numbered('C', 7, number));
        // Each draw is its own statement: the order of a call's arguments is
        // not fixed, the order of statements is.
        CString first = Pick(kFirstNames, random);
        CString last = Pick(kLastNames, random);
        name_.SetVal(first + " " + last);
        city_.SetVal(CString(Pick(kCities, random)));
        // Mostly active, some on hold, a few closed.
        long long roll = random.Between(1, 100);
        status_.SetVal(static_cast<unsigned short>(roll <= 80 ? 1 : roll <= 95 ? 2 : 3));
        balance_.SetVal(static_cast<double>(random.Between(-500000, 5000000)) / 100.0);
        since_ = DayAfter2000(sinceDay);
        return customers_.Insert(custNo_, error);
    }

    // One order of the current customer and its lines; the order's total is
    // the sum of its lines, so the lines are drawn first.
    oxioStatus::Status WriteOrder(long long number, long long sinceDay, long long lineCount, oxSampleRandom& random,
                                  CString& error) {
        ordNo_.SetVal(Numbered('O', 9, number));
        ordCustNo_.SetVal(custNo_.GetVal());
        orderDate_ = DayAfter2000(sinceDay + random.Between(0, 1500));
        struct Line {
            CString item;
            long long qty;
            long long cents;
        };
        std::vector<Line> lines;
        long long totalCents = 0;
        for (long long l = 0; l < lineCount; ++l) {
            const char* group = Pick(kItemGroups, random);
            long long serial = random.Between(0, 999999);
            CString item;
            item.Format("%s%06lld", group, serial);
            Line line{item, random.Between(1, 24), random.Between(50, 99999)};  // braces: left to right
            totalCents += line.qty * line.cents;
            lines.push_back(line);
        }
        total_.SetVal(static_cast<double>(totalCents) / 100.0);
        if (auto status = orders_.Insert(ordNo_, error); status != oxioStatus::Success) return status;
        lineOrdNo_.SetVal(ordNo_.GetVal());
        for (size_t l = 0; l < lines.size(); ++l) {
            lineNo_.SetVal(static_cast<double>(l + 1));
            item_.SetVal(lines[l].item);
            qty_.SetVal(static_cast<double>(lines[l].qty));
            price_.SetVal(static_cast<double>(lines[l].cents) / 100.0);
            if (auto status = lines_.Insert(ordNo_, error); status != oxioStatus::Success) return status;
        }
        return oxioStatus::Success;
    }

    // The attached values come first: the tables below hold pointers to them.
    oxAlpha custNo_, name_, city_;
    oxChoice status_;
    oxDouble balance_{0.0, 2};
    oxDate since_;
    oxAlpha ordNo_, ordCustNo_;
    oxDate orderDate_;
    oxDouble total_{0.0, 2};
    oxAlpha lineOrdNo_;
    oxDouble lineNo_{0.0, 0};
    oxAlpha item_;
    oxDouble qty_{0.0, 0};
    oxDouble price_{0.0, 2};
    SampleTable customers_, orders_, lines_;
};

}  // namespace

CString oxSampleCountsProblem(const oxSampleCounts& counts) {
    CString problem;
    if (counts.customers < 0 || counts.orders < 0 || counts.lines < 0)
        problem = "The counts of customers, orders and lines cannot be negative.";
    else if (counts.customers > kSampleMaxCustomers)
        problem.Format("At most %lld customers fit the customer numbers.", kSampleMaxCustomers);
    else if (counts.orders > kSampleMaxOrders)
        problem.Format("At most %lld orders fit the order numbers.", kSampleMaxOrders);
    else if (counts.orders > 0 && counts.customers == 0)
        problem = "Orders need at least one customer.";
    else if (counts.lines > 0 && counts.orders == 0)
        problem = "Lines need at least one order.";
    else if (counts.lines > counts.orders * kSampleMaxLinesPerOrder)
        problem.Format("At most %lld lines fit one order.", kSampleMaxLinesPerOrder);
    return problem;
}

oxioStatus::Status oxGenerateSample(const oxioDataFile& file, const oxSampleCounts& counts, CString& error) {
    error = oxSampleCountsProblem(counts);
    if (!error.IsEmpty()) return oxioStatus::Cancelled;
    SampleWriter writer(file);
    if (auto status = writer.Check(error); status != oxioStatus::Success) return status;
    return writer.Write(counts, error);
}
