// Reading of .HOD drawings (the format is described in hovistrel.h) and the fitting of a drawing
// into a window or a printed page.
#include "hovistrel.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

constexpr double kTextWidthFactor = 0.6;  // average character width per unit of text height

struct LineReader {
    const std::string& line;
    std::size_t pos = 0;

    void SkipBlanks()
    {
        while (pos < line.size() && (line[pos] == ' ' || line[pos] == '\t')) ++pos;
    }
    bool AtEnd()
    {
        SkipBlanks();
        return pos >= line.size();
    }
    std::string Word()
    {
        SkipBlanks();
        const std::size_t start = pos;
        while (pos < line.size() && line[pos] != ' ' && line[pos] != '\t') ++pos;
        return line.substr(start, pos - start);
    }
    std::string Rest()
    {
        SkipBlanks();
        std::string rest = line.substr(pos);
        while (!rest.empty() && (rest.back() == ' ' || rest.back() == '\t')) rest.pop_back();
        pos = line.size();
        return rest;
    }
};

std::string Upper(std::string word)
{
    for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return word;
}

// A finite decimal number that fills the whole word ("12", "-3.5", "1e2"); no hex, inf or nan.
bool ToNumber(const std::string& word, double& value)
{
    if (word.empty()) return false;
    for (char c : word)
        if (!std::isdigit(static_cast<unsigned char>(c)) && c != '.' && c != '-' && c != '+' &&
            c != 'e' && c != 'E')
            return false;
    char* end = nullptr;
    errno = 0;
    value = std::strtod(word.c_str(), &end);
    return end == word.c_str() + word.size() && errno == 0 && std::isfinite(value);
}

void AddError(HodDrawing& drawing, int line, const std::string& text)
{
    if (drawing.errors.size() < kMaxHodErrors) drawing.errors.push_back({line, text});
}

// Reads count numbers into v; reports the first word that is missing or not a number.
bool ReadNumbers(LineReader& reader, double* v, int count, const std::string& command, int lineNo,
                 HodDrawing& drawing)
{
    for (int i = 0; i < count; ++i) {
        const std::string word = reader.Word();
        if (word.empty()) {
            AddError(drawing, lineNo, command + " needs " + std::to_string(count) + " numbers");
            return false;
        }
        if (!ToNumber(word, v[i])) {
            AddError(drawing, lineNo, "\"" + word + "\" is not a number");
            return false;
        }
    }
    return true;
}

bool ExpectEnd(LineReader& reader, const std::string& command, int lineNo, HodDrawing& drawing)
{
    if (reader.AtEnd()) return true;
    AddError(drawing, lineNo, "unexpected \"" + reader.Word() + "\" after " + command);
    return false;
}

// One command line; the pen colour carries over to the commands that follow.
void ParseCommand(LineReader& reader, const std::string& command, int lineNo,
                  unsigned long& color, HodDrawing& drawing)
{
    HodShape shape;
    shape.color = color;
    if (command == "TITLE") {
        drawing.title = reader.Rest();
        return;
    }
    if (command == "COLOR") {
        double rgb[3];
        if (!ReadNumbers(reader, rgb, 3, command, lineNo, drawing)) return;
        for (double c : rgb)
            if (c < 0 || c > 255 || c != std::floor(c)) {
                AddError(drawing, lineNo, "COLOR takes whole numbers from 0 to 255");
                return;
            }
        if (!ExpectEnd(reader, command, lineNo, drawing)) return;
        color = static_cast<unsigned long>(rgb[0]) | static_cast<unsigned long>(rgb[1]) << 8 |
                static_cast<unsigned long>(rgb[2]) << 16;
        return;
    }
    if (command == "LINE" || command == "RECT") {
        shape.kind = command == "LINE" ? HodShapeKind::Line : HodShapeKind::Rect;
        if (!ReadNumbers(reader, shape.v, 4, command, lineNo, drawing) ||
            !ExpectEnd(reader, command, lineNo, drawing))
            return;
    } else if (command == "CIRCLE") {
        shape.kind = HodShapeKind::Circle;
        if (!ReadNumbers(reader, shape.v, 3, command, lineNo, drawing) ||
            !ExpectEnd(reader, command, lineNo, drawing))
            return;
        if (shape.v[2] <= 0) {
            AddError(drawing, lineNo, "CIRCLE needs a radius above 0");
            return;
        }
    } else if (command == "TEXT") {
        shape.kind = HodShapeKind::Text;
        if (!ReadNumbers(reader, shape.v, 3, command, lineNo, drawing)) return;
        if (shape.v[2] <= 0) {
            AddError(drawing, lineNo, "TEXT needs a height above 0");
            return;
        }
        shape.text = reader.Rest();
        if (shape.text.empty()) {
            AddError(drawing, lineNo, "TEXT has no text");
            return;
        }
    } else {
        AddError(drawing, lineNo, "unknown command \"" + command + "\"");
        return;
    }
    drawing.shapes.push_back(shape);
}

void Widen(HodBounds& b, double x, double y)
{
    if (b.empty) {
        b.minX = b.maxX = x;
        b.minY = b.maxY = y;
        b.empty = false;
        return;
    }
    b.minX = std::min(b.minX, x);
    b.maxX = std::max(b.maxX, x);
    b.minY = std::min(b.minY, y);
    b.maxY = std::max(b.maxY, y);
}

} // namespace

bool ParseHod(const std::string& text, HodDrawing& drawing)
{
    drawing = HodDrawing{};
    std::istringstream in(text);
    std::string line;
    int lineNo = 0;
    bool signed_ = false;
    unsigned long color = 0;
    while (std::getline(in, line)) {
        ++lineNo;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        LineReader reader{line};
        if (reader.AtEnd() || line[reader.pos] == '#') continue;
        const std::string command = Upper(reader.Word());
        if (!signed_) {
            // Without the signature this is not a drawing at all; reading on would only report
            // every line of some other file.
            double version = 0;
            const std::string word = reader.Word();
            if (command != "HOD" || !ToNumber(word, version)) {
                AddError(drawing, lineNo, "not a Vistrel drawing: the file must begin with \"HOD 1\"");
                return false;
            }
            if (version != kHodVersion || !reader.AtEnd()) {
                AddError(drawing, lineNo, "drawing format version " + word + " is not supported");
                return false;
            }
            signed_ = true;
            continue;
        }
        ParseCommand(reader, command, lineNo, color, drawing);
    }
    if (!signed_) AddError(drawing, 0, "the file is empty");
    return drawing.errors.empty();
}

bool LoadHodFile(const char* path, HodDrawing& drawing)
{
    drawing = HodDrawing{};
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        AddError(drawing, 0, std::string("cannot open ") + path);
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return ParseHod(text.str(), drawing);
}

HodBounds BoundsOfDrawing(const HodDrawing& drawing)
{
    HodBounds b;
    for (const HodShape& s : drawing.shapes) {
        switch (s.kind) {
        case HodShapeKind::Line:
        case HodShapeKind::Rect:
            Widen(b, s.v[0], s.v[1]);
            Widen(b, s.v[2], s.v[3]);
            break;
        case HodShapeKind::Circle:
            Widen(b, s.v[0] - s.v[2], s.v[1] - s.v[2]);
            Widen(b, s.v[0] + s.v[2], s.v[1] + s.v[2]);
            break;
        case HodShapeKind::Text:
            Widen(b, s.v[0], s.v[1]);
            Widen(b, s.v[0] + s.v[2] * kTextWidthFactor * double(s.text.size()), s.v[1] + s.v[2]);
            break;
        }
    }
    return b;
}

HodTransform FitTransform(const HodBounds& bounds, int width, int height, int margin)
{
    HodTransform t;
    const double w = std::max(1, width - 2 * margin);
    const double h = std::max(1, height - 2 * margin);
    if (bounds.empty) {
        t.offsetX = margin;
        t.offsetY = height - margin;
        return t;
    }
    // A drawing that is a single point or a straight horizontal or vertical line has no extent in
    // one direction; the other alone fixes the scale then.
    const double dx = bounds.maxX - bounds.minX;
    const double dy = bounds.maxY - bounds.minY;
    if (dx <= 0 && dy <= 0) t.scale = 1;
    else if (dx <= 0) t.scale = h / dy;
    else if (dy <= 0) t.scale = w / dx;
    else t.scale = std::min(w / dx, h / dy);
    // Centre the drawing in the area; y grows upwards in the drawing, downwards on the device.
    t.offsetX = margin + (w - dx * t.scale) / 2 - bounds.minX * t.scale;
    t.offsetY = margin + (h + dy * t.scale) / 2 + bounds.minY * t.scale;
    return t;
}
