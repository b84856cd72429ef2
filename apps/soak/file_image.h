#pragma once
// What the record file holds, read into plain maps: every customer, order
// and order line of the "ord" sample, with the fields the soak writes. Money
// is kept in whole cents so that sums compare exactly.

#include <map>
#include <string>
#include <utility>

class oxioDataFile;

struct CustomerImage {
    std::string name;
    std::string city;
    int status = 0;  // the choice's index, 1-based
    bool operator==(const CustomerImage&) const = default;
};

struct OrderImage {
    std::string custno;
    long long totalCents = 0;
    bool operator==(const OrderImage&) const = default;
};

struct LineImage {
    std::string item;
    long long qty = 0;
    long long priceCents = 0;
    long long AmountCents() const { return qty * priceCents; }
    bool operator==(const LineImage&) const = default;
};

// A line's key: its order number and line number.
using LineKey = std::pair<std::string, long long>;

struct FileImage {
    std::map<std::string, CustomerImage> customers;  // by CUSTNO
    std::map<std::string, OrderImage> orders;        // by ORDNO
    std::map<LineKey, LineImage> lines;
};

// Reads every customer, order and line of `file`; false with a sentence in
// `error` naming the table and the record that could not be read.
bool ReadFileImage(const oxioDataFile& file, FileImage& image, std::string& error);

// The whole cents of a money text such as "1,234.50" or "-3.1"; false when
// the text is not a number.
bool ParseCents(const std::string& text, long long& cents);
