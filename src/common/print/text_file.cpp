// The plain-text form of a report.

#include <cerrno>
#include <cstring>
#include <fstream>

#include "report_files.h"

std::string xpPagesText(const std::vector<xpPage>& pages) {
    std::string text;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (i > 0) text += '\f';
        for (const std::string& line : pages[i].lines) text += line + '\n';
    }
    return text;
}

std::string xpWriteText(const std::string& path, const std::vector<xpPage>& pages) {
    errno = 0;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return errno ? std::strerror(errno) : "the file could not be opened";
    out << xpPagesText(pages);
    out.close();
    if (!out) return errno ? std::strerror(errno) : "the file could not be written";
    return {};
}
