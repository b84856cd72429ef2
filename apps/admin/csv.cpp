#include "csv.h"

#include <cassert>

namespace oxdm::admin {

namespace {

// Walks the text once; `line` follows every line break, quoted ones too.
class CsvParser {
public:
    explicit CsvParser(std::string_view text) : text_(text) {
        if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
    }

    bool Parse(std::vector<CsvRecord>& records, CsvFault& fault) {
        while (pos_ < text_.size()) {
            CsvRecord record;
            record.line = line_;
            if (!ParseRecord(record, fault)) return false;
            records.push_back(std::move(record));
        }
        return true;
    }

private:
    bool Fail(CsvFault& fault, int line, int column, const char* message) {
        fault = {line, column, message};
        return false;
    }

    bool AtFieldEnd() const {
        return pos_ >= text_.size() || text_[pos_] == ',' || text_[pos_] == '\n' || text_[pos_] == '\r';
    }

    bool ParseRecord(CsvRecord& record, CsvFault& fault) {
        for (;;) {
            int column = static_cast<int>(record.fields.size()) + 1;
            std::string field;
            if (pos_ < text_.size() && text_[pos_] == '"') {
                if (!ParseQuoted(field, column, fault)) return false;
            } else {
                for (; !AtFieldEnd(); ++pos_) {
                    if (text_[pos_] == '"')
                        return Fail(fault, line_, column,
                                    "a quote inside an unquoted field; quote the whole field and double the quote");
                    field += text_[pos_];
                }
            }
            record.fields.push_back(std::move(field));
            if (pos_ < text_.size() && text_[pos_] == ',') {
                ++pos_;
                continue;
            }
            if (pos_ < text_.size() && text_[pos_] == '\r') {
                ++pos_;
                if (pos_ >= text_.size() || text_[pos_] != '\n')
                    return Fail(fault, line_, column, "a carriage return without a line feed");
            }
            if (pos_ < text_.size()) ++pos_;  // the line feed
            ++line_;
            return true;
        }
    }

    // REQUIRES: the text stands on the opening quote.
    bool ParseQuoted(std::string& field, int column, CsvFault& fault) {
        assert(pos_ < text_.size() && text_[pos_] == '"');
        int start = line_;
        for (++pos_;; ++pos_) {
            if (pos_ >= text_.size()) return Fail(fault, start, column, "a quoted field is not closed");
            char ch = text_[pos_];
            if (ch == '"') {
                if (pos_ + 1 < text_.size() && text_[pos_ + 1] == '"') {
                    field += '"';
                    ++pos_;
                    continue;
                }
                ++pos_;
                break;
            }
            if (ch == '\n') ++line_;
            field += ch;
        }
        if (!AtFieldEnd()) return Fail(fault, line_, column, "text after the closing quote of a field");
        return true;
    }

    // Invariant: pos_ <= text_.size(); line_ is the line pos_ stands on.
    std::string_view text_;
    size_t pos_ = 0;
    int line_ = 1;
};

}  // namespace

bool ParseCsv(std::string_view text, std::vector<CsvRecord>& records, CsvFault& fault) {
    return CsvParser(text).Parse(records, fault);
}

std::string CsvLine(const std::vector<std::string>& fields) {
    std::string out;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (i) out += ',';
        const std::string& field = fields[i];
        if (field.find_first_of(",\"\r\n") == std::string::npos) {
            out += field;
            continue;
        }
        out += '"';
        for (char ch : field) {
            if (ch == '"') out += '"';
            out += ch;
        }
        out += '"';
    }
    return out + "\r\n";
}

}  // namespace oxdm::admin
