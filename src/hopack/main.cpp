// hopack: the package builder of the setup program.
//   hopack build DESCRIPTION OUTDIR [--program DIR] [--sign-command TEMPLATE] [--sign-product]
//                [--jobs N]
//   hopack list DIR
// Exit code 0 on success; otherwise 1 (a problem with the package) or 2 (wrong usage), with the
// reasons on stderr.
#include "hopack.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <thread>

namespace {

const char kUsage[] =
    "usage: hopack build DESCRIPTION OUTDIR [--program DIR] [--sign-command TEMPLATE] [--sign-product]\n"
    "                    [--jobs N]\n"
    "       hopack list DIR\n"
    "  build  writes the distribution folder OUTDIR from the package description (TOML);\n"
    "         the setup program's own files are taken from DIR (default: hopack's folder);\n"
    "         --sign-command runs TEMPLATE, with $f standing for the file, on copies of\n"
    "         hosetup.exe, holang.dll and hounzip.exe (through /bin/sh, or cmd on Windows),\n"
    "         --sign-product on the package's .exe and .dll files as well;\n"
    "         --jobs compresses N members at once (default: one per processor); the\n"
    "         distribution is the same whatever N is\n"
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
    std::string signCommand;
    bool signProduct = false;
    unsigned jobs = std::max(std::thread::hardware_concurrency(), 1u);
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--program") == 0 && i + 1 < argc) programDir = argv[++i];
        else if (std::strcmp(argv[i], "--sign-command") == 0 && i + 1 < argc) signCommand = argv[++i];
        else if (std::strcmp(argv[i], "--sign-product") == 0) signProduct = true;
        else if (std::strcmp(argv[i], "--jobs") == 0 && i + 1 < argc) {
            char* end = nullptr;
            const unsigned long n = std::strtoul(argv[++i], &end, 10);
            if (*end != '\0' || n < 1 || n > 256) { std::cerr << kUsage; return 2; }
            jobs = static_cast<unsigned>(n);
        }
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
    fs::path signingFolder;
    if (ReadDescription(positional[0], description, diag) &&
        PlanPackage(description, programDir, layout, diag)) {
        // The command line's signing command replaces the description's.
        const SigningOptions signing{signCommand.empty() ? description.signCommand : signCommand,
                                     signProduct || description.signProduct};
        if (signing.product && signing.command.empty())
            diag.error("signing the product's files needs a signing command (--sign-command or sign_command)");
        else if (SignPackage(layout, signing, signingFolder, diag))
            WriteDistribution(layout, positional[1], description.compileDate, jobs, diag);
    }
    RemoveSigningFolder(signingFolder);
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
