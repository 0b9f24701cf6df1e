// hopack: the package builder of the setup program.
//   hopack build DESCRIPTION OUTDIR [--program DIR]
//   hopack list DIR
// Exit code 0 on success; otherwise 1 (a problem with the package) or 2 (wrong usage), with the
// reasons on stderr.
#include "hopack.h"

#include <cstring>
#include <iostream>

namespace {

const char kUsage[] =
    "usage: hopack build DESCRIPTION OUTDIR [--program DIR]\n"
    "       hopack list DIR\n"
    "  build  writes the distribution folder OUTDIR from the package description (TOML);\n"
    "         the setup program's own files are taken from DIR (default: hopack's folder)\n"
    "  list   shows a distribution's header, records and shortcuts and checks its members\n";

int Report(const Diagnostics& diag)
{
    for (const std::string& w : diag.warnings) std::cerr << "hopack: warning: " << w << "\n";
    for (const std::string& e : diag.errors) std::cerr << "hopack: error: " << e << "\n";
    return diag.ok() ? 0 : 1;
}

int Build(int argc, char** argv)
{
    std::vector<std::string> positional;
    fs::path programDir = ExecutableFolder(argv[0]);
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--program") == 0 && i + 1 < argc) programDir = argv[++i];
        else if (argv[i][0] == '-' && argv[i][1] == '-') { std::cerr << kUsage; return 2; }
        else positional.push_back(argv[i]);
    }
    if (positional.size() != 2) {
        std::cerr << kUsage;
        return 2;
    }
    Diagnostics diag;
    PackageDescription description;
    PackageLayout layout;
    if (ReadDescription(positional[0], description, diag) &&
        PlanPackage(description, programDir, layout, diag))
        WriteDistribution(layout, positional[1], description.compileDate, diag);
    if (diag.ok())
        std::cout << "hopack: wrote " << layout.files.size() << " records and "
                  << layout.shortcuts.size() << " shortcuts to " << positional[1] << "\n";
    return Report(diag);
}

int List(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << kUsage;
        return 2;
    }
    Diagnostics diag;
    ListDistribution(argv[2], std::cout, diag);
    std::cout.flush();
    return Report(diag);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc >= 2 && std::strcmp(argv[1], "build") == 0) return Build(argc, argv);
    if (argc >= 2 && std::strcmp(argv[1], "list") == 0) return List(argc, argv);
    std::cerr << kUsage;
    return 2;
}
