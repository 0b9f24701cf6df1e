// hovistrel.exe, the sample product that the setup program installs: a small viewer of Vistrel
// drawings (.HOD). This header is the folder's interface; every .cpp of app/ includes it.
//
// The .HOD format is line-oriented text. Blank lines and lines whose first non-blank character is
// '#' are skipped; every other line is one command, words separated by blanks or tabs:
//   HOD 1                        signature and format version; the first command of every file
//   TITLE text                   the drawing's title (the rest of the line)
//   COLOR r g b                  pen colour for the commands that follow, each 0 to 255
//   LINE x1 y1 x2 y2             a straight line
//   RECT x1 y1 x2 y2             an axis-parallel rectangle given by two opposite corners
//   CIRCLE x y r                 a circle around (x, y), r > 0
//   TEXT x y h text              text whose lower-left corner is (x, y), h > 0 high
// Coordinates are millimetres with y pointing up, as on a drawing sheet. Command words are not
// case-sensitive. A faulty line is reported with its number and left out; the rest is drawn.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

// ---- constants ------------------------------------------------------------------------------

constexpr char kMainWindowClass[] = "HOVISTREL_MainWClass"; // other programs find the viewer by it
constexpr char kMainWindowTitle[] = "Vistrel";
constexpr int kHodVersion = 1;            // the only version this viewer reads
constexpr std::size_t kMaxHodErrors = 20; // reporting stops here; a wrong file would flood it

// Menu commands of the main window.
constexpr int kCmdOpen = 101;
constexpr int kCmdPrint = 102;
constexpr int kCmdExit = 103;
constexpr int kCmdHelp = 201;
constexpr int kCmdAbout = 202;

// ---- types ----------------------------------------------------------------------------------

enum class HodShapeKind { Line, Rect, Circle, Text };

struct HodShape {
    HodShapeKind kind = HodShapeKind::Line;
    double v[4] = {0, 0, 0, 0};   // LINE/RECT: x1 y1 x2 y2; CIRCLE: x y r; TEXT: x y h
    unsigned long color = 0;      // 0x00BBGGRR, as GDI takes it
    std::string text;             // TEXT only
};

struct HodError {
    int line = 0;                 // 1-based line number in the file; 0 for the file as a whole
    std::string text;
};

struct HodDrawing {
    std::string title;
    std::vector<HodShape> shapes;
    std::vector<HodError> errors; // at most kMaxHodErrors
};

// Extent of a drawing in its own units.
struct HodBounds {
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    bool empty = true;
};

// Maps drawing units to device pixels: px = offsetX + x * scale, py = offsetY - y * scale.
struct HodTransform {
    double scale = 1, offsetX = 0, offsetY = 0;
};

// What the command line asks for.
struct ViewerCommand {
    bool print = false;           // "/p": print the drawing and end
    std::string path;             // the drawing to show; empty for none
    std::string error;            // set when the command line cannot be understood
};

// ---- functions ------------------------------------------------------------------------------

// hod_format.cpp
bool ParseHod(const std::string& text, HodDrawing& drawing);   // false when any error was found
bool LoadHodFile(const char* path, HodDrawing& drawing);       // false when unreadable or faulty
HodBounds BoundsOfDrawing(const HodDrawing& drawing);
HodTransform FitTransform(const HodBounds& bounds, int width, int height, int margin);

// command_line.cpp
ViewerCommand ParseViewerCommand(const char* commandLine);    // without the program's own name

// view.cpp
void PaintDrawing(HDC dc, const RECT& area, const HodDrawing& drawing);
void PaintStatus(HDC dc, const RECT& area, const char* path, const HodDrawing& drawing);

// print.cpp
bool PrintDrawing(HWND owner, const char* path, const HodDrawing& drawing);
