// Runs cut short: the real hosetup.exe killed from outside at chosen moments of an installation and
// of a removal, each moment found by what the log and its journal hold, never by a guessed time.
// Afterwards the user goes on as a user would (installs again, or starts the removal again), and the
// removal then leaves nothing of the product but what the next restart deletes.
#include "setup_run.h"

#include <algorithm>
#include <fstream>
#include <functional>

namespace {

class Interrupted : public WholeRun {
protected:
    std::string log() { return readFile(folders_.commonData + "hosetup.log"); }
    std::string journal() { return readFile(folders_.commonData + "hosetup.journal"); }

    // File lines the copy step has logged so far.
    int filesCopied()
    {
        const std::string text = log();
        const std::size_t copying = text.find("Copying files");
        int count = 0;
        for (std::size_t at = text.find("\r\n", copying); copying != std::string::npos && at != std::string::npos;
             at = text.find("\r\n", at + 2))
            count += at + 2 < text.size() && text[at + 2] != '*' && text[at + 2] != '#';
        return count;
    }

    // Starts command, waits until `moment` holds (or the child ended), and kills the child there.
    void killWhen(const std::string& command, const std::function<bool()>& moment)
    {
        SetupChild run(command);
        while (!moment() && WaitForSingleObject(run.child.process, 1) == WAIT_TIMEOUT) {
        }
        TerminateProcess(run.child.process, 9);
        run.exitCode();
    }

    // What is left of the product: its folders, links and registry keys, but what the next restart
    // deletes (the installation folder, its parent and the program's own files in it).
    std::vector<std::string> leftovers()
    {
        const std::vector<std::string> pending = pendingDeletions();
        std::vector<std::string> left, candidates = {folders_.programs + "Vistrel Test", folders_.desktop + "Vistrel Test.lnk"};
        for (const std::string& folder : {folders_.install, folders_.commonData, folders_.documents})
            candidates.push_back(folder.substr(0, folder.rfind('\\', folder.size() - 2)));
        WIN32_FIND_DATAA found;
        HANDLE search = FindFirstFileA((folders_.install + "*").c_str(), &found);
        for (bool more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileA(search, &found))
            candidates.push_back(folders_.install + found.cFileName);
        FindClose(search);
        for (std::string path : candidates) {
            if (path.back() != '.' && fileExists(path) && std::find(pending.begin(), pending.end(), CharLowerA(&path[0])) == pending.end())
                left.push_back(path);
        }
        for (const char* key : {kProductKey, kUninstall, kAppPath, "Software\\Classes\\.HOD", "Software\\Harwick-Orbel"}) {
            if (regKeyExists(HKEY_LOCAL_MACHINE, key))
                left.push_back(key);
        }
        return left;
    }

    // The removal started again for as long as the installation is recorded, as a user would:
    // through the uninstall entry, or through the installation folder's program.
    void finishRemoval()
    {
        const std::string program = "\"" + folders_.install + "hosetup.exe\" -x -S";
        if (regKeyExists(HKEY_LOCAL_MACHINE, kUninstall))
            EXPECT_EQ(runProcess(uninstallCommand() + " -S", kRunTimeout), 0u);
        else if (regKeyExists(HKEY_LOCAL_MACHINE, kProductKey))
            EXPECT_EQ(runProcess(program, kRunTimeout), 0u);
    }

    // Sixty small files, each in a folder of its own, and a large one among them that takes a while
    // to unpack.
    Package manyFiles()
    {
        Package package = samplePackage();
        std::string large(24 << 20, '\0');
        for (std::size_t i = 0, x = 1; i < large.size(); ++i)
            large[i] = static_cast<char>((x = x * 6364136223846793005ull + 1442695040888963407ull) >> 56);
        for (int i = 0; i < 60; ++i)
            package.files.push_back({"parts/" + std::to_string(i) + ".dat", 10, "Part" + std::to_string(i), "part.dat", "x"});
        package.files.insert(package.files.begin() + 30, {"parts/large.dat", 10, "Large", "", large});
        return package;
    }
};

TEST_F(Interrupted, AnInstallationKilledAtAnyPointIsClearedByTheNextInstallationsRemoval)
{
    const std::string dist = build(manyFiles()), setup = "\"" + dist + "hosetup.exe\" -S";
    const struct { const char* moment; std::function<bool()> reached; } rows[] = {
        {"in the directory step", [&] { return log().find("#" + folders_.install + "Part5\\") != std::string::npos; }},
        {"after 1 file", [&] { return filesCopied() >= 1; }},
        {"after 10 files", [&] { return filesCopied() >= 10; }},
        {"while the large file is unpacked", [&] {
             return journal().find("large.dat") != std::string::npos && log().find("large.dat") == std::string::npos; }},
        {"after 59 files", [&] { return filesCopied() >= 59; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.moment);
        removeProductTraces();
        killWhen(setup, row.reached);
        ASSERT_EQ(runProcess(setup, kRunTimeout), 0u);
        EXPECT_NE(log().find("Taking over an interrupted run"), std::string::npos);
        EXPECT_EQ(journal(), "");   // settled by the installation that ran to its end
        finishRemoval();
        EXPECT_EQ(leftovers(), std::vector<std::string>());
    }
}

TEST_F(Interrupted, ARemovalKilledAtAnyPointIsFinishedByStartingItAgain)
{
    const std::string dist = build(manyFiles());
    const struct { const char* moment; std::string gone; } rows[] = {
        {"in the file pass", folders_.install + "Part3\\part.dat"},
        {"in the folder passes", folders_.install + "Part50\\"},
        {"as it deletes the log", folders_.commonData + "hosetup.log"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.moment);
        removeProductTraces();
        ASSERT_EQ(install(dist), 0u);
        std::ofstream(folders_.documents + "Drawings\\mine.hod", std::ios::binary) << "the user's";
        killWhen(uninstallCommand() + " -S", [&] { return !fileExists(row.gone); });
        finishRemoval();
        EXPECT_EQ(readFile(folders_.documents + "Drawings\\mine.hod"), "the user's");
        removeTree(folders_.documents.substr(0, folders_.documents.rfind('\\', folders_.documents.size() - 2)));
        EXPECT_EQ(leftovers(), std::vector<std::string>());
    }
}

// A log that another program holds open during an update is a step that fails (a silent run ends
// with 2 after its retries) before anything unlogged is made; the removal then leaves nothing.
TEST_F(Interrupted, AnUpdateWhoseLogCannotBeWrittenStopsBeforeItMakesAnything)
{
    ASSERT_EQ(install(build(samplePackage())), 0u);
    const std::string dist = build(samplePackage("2022-12-24"));
    HANDLE held = CreateFileA((folders_.commonData + "hosetup.log").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(install(dist), 2u);
    CloseHandle(held);
    EXPECT_FALSE(fileExists(folders_.commonData + "Backups"));
    EXPECT_EQ(readFile(folders_.install + "hovistrel.exe"), "main program 2022-11-29");
    finishRemoval();
    EXPECT_EQ(leftovers(), std::vector<std::string>());
}

} // namespace
