// Reading of .HOD drawings and fitting them into an area.
#include "hovistrel.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <windows.h>

namespace {

std::string ErrorsOf(const HodDrawing& d)
{
    std::string all;
    for (const HodError& e : d.errors) all += std::to_string(e.line) + ": " + e.text + "\n";
    return all;
}

TEST(HodFormat, ReadsEveryCommandWithColourCarriedOver)
{
    const std::string text =
        "# a comment\r\n"
        "\r\n"
        "  hod 1\r\n"
        "TITLE  Flange DN50  \r\n"
        "\t# indented comment\n"
        "LINE 0 0 10 -5.5\n"
        "color 200 30 30\n"
        "Rect -1 -2 3 4\n"
        "CIRCLE 1e1 20 2.5\n"
        "COLOR 0 0 255\n"
        "TEXT 1 2 3.5 Washer  M8 # not a comment\n";
    HodDrawing d;
    ASSERT_TRUE(ParseHod(text, d)) << ErrorsOf(d);
    EXPECT_EQ(d.title, "Flange DN50");
    ASSERT_EQ(d.shapes.size(), 4u);

    EXPECT_EQ(d.shapes[0].kind, HodShapeKind::Line);
    EXPECT_DOUBLE_EQ(d.shapes[0].v[3], -5.5);
    EXPECT_EQ(d.shapes[0].color, 0u);

    EXPECT_EQ(d.shapes[1].kind, HodShapeKind::Rect);
    EXPECT_EQ(d.shapes[1].color, static_cast<unsigned long>(RGB(200, 30, 30)));
    EXPECT_EQ(d.shapes[2].kind, HodShapeKind::Circle);
    EXPECT_DOUBLE_EQ(d.shapes[2].v[0], 10.0);
    EXPECT_EQ(d.shapes[2].color, static_cast<unsigned long>(RGB(200, 30, 30)));

    EXPECT_EQ(d.shapes[3].kind, HodShapeKind::Text);
    EXPECT_DOUBLE_EQ(d.shapes[3].v[2], 3.5);
    EXPECT_EQ(d.shapes[3].text, "Washer  M8 # not a comment");
    EXPECT_EQ(d.shapes[3].color, static_cast<unsigned long>(RGB(0, 0, 255)));
}

TEST(HodFormat, RefusesFilesWithoutTheSignature)
{
    struct Case { const char* text; int line; } cases[] = {
        {"LINE 0 0 1 1\nHOD 1\n", 1},       // signature not first
        {"# only comments\n\nHOD 2\nLINE 0 0 1 1\n", 3},   // a later version
        {"HOD 1 extra\n", 1},
        {"HOD one\n", 1},
        {"", 0},
        {"# nothing but a comment\n", 0},
    };
    for (const auto& c : cases) {
        HodDrawing d;
        EXPECT_FALSE(ParseHod(c.text, d)) << c.text;
        ASSERT_EQ(d.errors.size(), 1u) << c.text << ErrorsOf(d);
        EXPECT_EQ(d.errors[0].line, c.line) << c.text;
        EXPECT_TRUE(d.shapes.empty()) << c.text;
    }
}

TEST(HodFormat, ReportsFaultyLinesByNumberAndKeepsTheRest)
{
    const std::string text =
        "HOD 1\n"
        "LINE 0 0 1\n"              // 2: too few numbers
        "LINE 0 0 1 1O\n"           // 3: letter O for zero
        "LINE 0 0 1 1 2\n"          // 4: one number too many
        "CIRCLE 0 0 0\n"            // 5: no radius
        "CIRCLE 0 0 -1\n"           // 6
        "COLOR 0 0 256\n"           // 7: out of range
        "COLOR 0 0.5 0\n"           // 8: not whole
        "ARC 0 0 1 0 90\n"          // 9: unknown
        "TEXT 0 0 3\n"              // 10: no text
        "TEXT 0 0 0 zero high\n"    // 11
        "LINE inf 0 1 1\n"          // 12
        "LINE nan 0 1 1\n"          // 13
        "LINE 0x10 0 1 1\n"         // 14
        "LINE 1e999 0 1 1\n"        // 15: overflows
        "RECT 0 0 5 5\n";           // 16: fine
    HodDrawing d;
    EXPECT_FALSE(ParseHod(text, d));
    std::vector<int> lines;
    for (const HodError& e : d.errors) lines.push_back(e.line);
    EXPECT_EQ(lines, (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15})) << ErrorsOf(d);
    EXPECT_NE(d.errors[1].text.find("\"1O\""), std::string::npos) << d.errors[1].text;
    EXPECT_NE(d.errors[7].text.find("ARC"), std::string::npos) << d.errors[7].text;
    ASSERT_EQ(d.shapes.size(), 1u);
    EXPECT_EQ(d.shapes[0].kind, HodShapeKind::Rect);
    // A refused COLOR leaves the pen as it was.
    EXPECT_EQ(d.shapes[0].color, 0u);
}

TEST(HodFormat, StopsCollectingErrorsAtTheLimit)
{
    std::string text = "HOD 1\n";
    for (int i = 0; i < 50; ++i) text += "BOGUS\n";
    text += "LINE 0 0 1 1\n";
    HodDrawing d;
    EXPECT_FALSE(ParseHod(text, d));
    EXPECT_EQ(d.errors.size(), kMaxHodErrors);
    EXPECT_EQ(d.shapes.size(), 1u);   // reading goes on after the limit
}

TEST(HodFormat, LoadsFilesAndReportsOneThatCannotBeOpened)
{
    char folder[MAX_PATH], path[MAX_PATH];
    ASSERT_NE(GetTempPathA(sizeof(folder), folder), 0u);
    ASSERT_NE(GetTempFileNameA(folder, "hod", 0, path), 0u);
    FILE* f = std::fopen(path, "wb");
    ASSERT_NE(f, nullptr);
    std::fputs("HOD 1\r\nCIRCLE 0 0 5\r\n", f);
    std::fclose(f);
    HodDrawing d;
    EXPECT_TRUE(LoadHodFile(path, d)) << ErrorsOf(d);
    EXPECT_EQ(d.shapes.size(), 1u);
    DeleteFileA(path);

    EXPECT_FALSE(LoadHodFile(path, d));
    ASSERT_EQ(d.errors.size(), 1u);
    EXPECT_EQ(d.errors[0].line, 0);
    EXPECT_TRUE(d.shapes.empty());
}

TEST(HodFit, BoundsCoverCirclesAndText)
{
    HodDrawing d;
    ASSERT_TRUE(ParseHod("HOD 1\nCIRCLE 10 10 5\nTEXT -20 0 10 ab\n", d)) << ErrorsOf(d);
    const HodBounds b = BoundsOfDrawing(d);
    ASSERT_FALSE(b.empty);
    EXPECT_DOUBLE_EQ(b.minX, -20);
    EXPECT_DOUBLE_EQ(b.maxX, 15);
    EXPECT_DOUBLE_EQ(b.minY, 0);
    EXPECT_DOUBLE_EQ(b.maxY, 15);
    EXPECT_TRUE(BoundsOfDrawing(HodDrawing{}).empty);
}

// Device position of a drawing point.
double Dx(const HodTransform& t, double x) { return t.offsetX + x * t.scale; }
double Dy(const HodTransform& t, double y) { return t.offsetY - y * t.scale; }

TEST(HodFit, FitsCentredKeepingProportionsWithYUp)
{
    HodBounds b;
    b.empty = false;
    b.minX = -100; b.maxX = 100; b.minY = 0; b.maxY = 50;   // 4:1
    const HodTransform t = FitTransform(b, 420, 420, 10);    // 400 x 400 inside the margin
    EXPECT_DOUBLE_EQ(t.scale, 2.0);                          // the width limits
    EXPECT_DOUBLE_EQ(Dx(t, -100), 10);
    EXPECT_DOUBLE_EQ(Dx(t, 100), 410);
    // 100 pixels high, centred in 400: top at 160, bottom at 260; higher y is further up.
    EXPECT_DOUBLE_EQ(Dy(t, 50), 160);
    EXPECT_DOUBLE_EQ(Dy(t, 0), 260);
}

TEST(HodFit, HandlesDrawingsWithoutExtentInOneDirection)
{
    HodBounds line;
    line.empty = false;
    line.minX = 0; line.maxX = 50; line.minY = 7; line.maxY = 7;   // horizontal line
    HodTransform t = FitTransform(line, 120, 80, 10);
    EXPECT_DOUBLE_EQ(t.scale, 2.0);
    EXPECT_DOUBLE_EQ(Dx(t, 0), 10);
    EXPECT_DOUBLE_EQ(Dy(t, 7), 40);                                 // vertically centred

    HodBounds point;
    point.empty = false;
    point.minX = point.maxX = 3; point.minY = point.maxY = 4;
    t = FitTransform(point, 100, 100, 0);
    EXPECT_DOUBLE_EQ(Dx(t, 3), 50);
    EXPECT_DOUBLE_EQ(Dy(t, 4), 50);

    // A window too small for its margins still gives a usable, positive scale.
    t = FitTransform(line, 10, 10, 20);
    EXPECT_GT(t.scale, 0);
}

} // namespace

namespace {

// Every drawing and template the sample product ships reads without a problem.
TEST(HodFormat, ShippedDrawingsAndTemplatesAreClean)
{
    const char* files[] = {"drawings/hovistrel.hod", "drawings/flange.hod", "drawings/gallery.hod",
                           "program/Samples/tour.hod", "templates/a4-landscape.hot",
                           "templates/a3-landscape.hot"};
    for (const char* name : files) {
        const std::string path = std::string(VISTREL_FILES_DIR) + "/" + name;
        HodDrawing d;
        EXPECT_TRUE(LoadHodFile(path.c_str(), d)) << path << "\n" << ErrorsOf(d);
        EXPECT_FALSE(d.title.empty()) << path;
        EXPECT_GT(d.shapes.size(), 3u) << path;
    }
}

} // namespace
