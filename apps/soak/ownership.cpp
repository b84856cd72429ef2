#include "ownership.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace {

// The number that the digits of text[from..] spell, or -1 when some are not
// digits or there are none.
long long Digits(const std::string& text, size_t from) {
    if (from >= text.size()) return -1;
    long long value = 0;
    for (size_t i = from; i < text.size(); ++i) {
        if (!std::isdigit(static_cast<unsigned char>(text[i]))) return -1;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

}  // namespace

int OrderOwner(const std::string& ordno, int processes) {
    if (ordno.size() == 10 && ordno[0] == 'O') {
        const long long number = Digits(ordno, 1);
        return number >= 1 ? static_cast<int>((number - 1) % processes) : -1;
    }
    if (ordno.size() == 10 && ordno[0] == 'R') {
        const long long owner = Digits(ordno.substr(0, 3), 1);
        return owner >= 0 && owner < processes && Digits(ordno, 3) >= 0 ? static_cast<int>(owner) : -1;
    }
    return -1;
}

std::string RenumberedOrder(int index, long long serial) {
    char text[32];
    std::snprintf(text, sizeof text, "R%02d%07lld", index, serial);
    return text;
}

std::string CustomerToken(int index, long long seq) {
    char text[32];
    std::snprintf(text, sizeof text, "p%d-%07lld", index, seq);
    return text;
}

long long TokenSequence(const std::string& city) {
    const size_t dash = city.find('-');
    if (city.size() < 3 || city[0] != 'p' || dash == std::string::npos || Digits(city.substr(0, dash), 1) < 0)
        return -1;
    return Digits(city, dash + 1);
}

std::string NameForToken(const std::string& token) { return "Soak " + token; }

int StatusForSequence(long long seq) { return static_cast<int>(seq % 3) + 1; }
