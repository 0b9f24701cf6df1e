// Checks and conversions of the texts that go into the data file. The setup program reads every
// text as 8-bit ANSI (Windows-1252 on the machines it targets), while a description is UTF-8; texts
// are converted here, and a character that has no ANSI form is refused rather than garbled.
#include "hopack.h"

#include <cctype>

namespace {

// Windows-1252 bytes 0x80..0x9F and the characters they stand for (0 = unassigned).
const std::uint16_t kAnsiHighControls[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

bool CodePointToAnsi(std::uint32_t cp, char& out)
{
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        out = static_cast<char>(cp);
        return true;
    }
    for (int i = 0; i < 32; ++i) {
        if (kAnsiHighControls[i] != 0 && kAnsiHighControls[i] == cp) {
            out = static_cast<char>(0x80 + i);
            return true;
        }
    }
    return false;
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

} // namespace

bool Utf8ToAnsi(const std::string& utf8, std::string& ansi)
{
    ansi.clear();
    for (std::size_t i = 0; i < utf8.size();) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        std::uint32_t cp = 0;
        std::size_t length = 1;
        if (lead < 0x80) cp = lead;
        else if ((lead & 0xE0) == 0xC0) { cp = lead & 0x1F; length = 2; }
        else if ((lead & 0xF0) == 0xE0) { cp = lead & 0x0F; length = 3; }
        else if ((lead & 0xF8) == 0xF0) { cp = lead & 0x07; length = 4; }
        else return false;
        if (i + length > utf8.size()) return false;
        for (std::size_t k = 1; k < length; ++k) {
            const unsigned char next = static_cast<unsigned char>(utf8[i + k]);
            if ((next & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (next & 0x3F);
        }
        char c = 0;
        if (!CodePointToAnsi(cp, c)) return false;
        ansi.push_back(c);
        i += length;
    }
    return true;
}

std::string CheckPlainText(const std::string& text)
{
    const char* problem = plainTextProblem(text);
    return problem ? problem : "";
}

std::string CheckFileName(const std::string& name)
{
    const char* problem = fileNameProblem(name);
    return problem ? problem : "";
}

std::string CheckRelativeFolder(const std::string& folder)
{
    std::string_view part;
    const char* problem = relativeFolderProblem(folder, &part);
    if (!problem)
        return {};
    if (!part.empty())
        return "has a part \"" + std::string(part) + "\" that " + problem;
    return problem;
}

bool ParseCompileDate(const std::string& date, int& year, int& month, int& day)
{
    if (date.size() != 10 || date[4] != '-' || date[7] != '-') return false;
    for (std::size_t i : {0, 1, 2, 3, 5, 6, 8, 9})
        if (!std::isdigit(static_cast<unsigned char>(date[i]))) return false;
    year = std::stoi(date.substr(0, 4));
    month = std::stoi(date.substr(5, 2));
    day = std::stoi(date.substr(8, 2));
    static const int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12 || day < 1) return false;
    const int days = kDays[month - 1] + (month == 2 && IsLeapYear(year) ? 1 : 0);
    return day <= days;
}

std::string CheckCompileDate(const std::string& date)
{
    int year = 0, month = 0, day = 0;
    if (!ParseCompileDate(date, year, month, day)) return "is not a date of the form YYYY-MM-DD";
    // The members' zip time stamps carry the compile date, and they count years from 1980.
    if (year < 1980 || year > 2107) return "lies outside the years 1980 to 2107";
    return {};
}

std::string FoldCase(const std::string& text)
{
    // Windows compares file names without case; ASCII and the Latin-1 capitals are folded.
    std::string folded = text;
    for (char& c : folded) {
        const unsigned char u = static_cast<unsigned char>(c);
        if (u >= 'A' && u <= 'Z') c = static_cast<char>(u + 32);
        else if (u >= 0xC0 && u <= 0xDE && u != 0xD7) c = static_cast<char>(u + 32);
    }
    return folded;
}
