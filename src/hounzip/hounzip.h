// hounzip: interface between the parts of the unpacker (command line, archive reading, file names, decoding,
// writing). The exit codes are documented in main.cpp and README.md.
#ifndef HOUNZIP_H
#define HOUNZIP_H

#include <windows.h>
#include <stddef.h>
#include <stdint.h>

// ---- Constants ----------------------------------------------------------------------------------------------

// Exit codes: the installer treats everything but 0 as a failure and shows the number.
enum {
    HZ_OK = 0,
    HZ_ERR_COMMAND_LINE = 1,  // missing or extra argument, unknown option, empty or overlong path
    HZ_ERR_OPEN = 2,          // archive missing, not readable, a folder, or a read failed
    HZ_ERR_FORMAT = 3,        // not an archive holding exactly one well-formed file entry
    HZ_ERR_UNSUPPORTED = 4,   // compression method other than stored/deflate, or an encrypted entry
    HZ_ERR_DATA = 5,          // CRC-32 mismatch, damaged deflate data, unpacked length differs
    HZ_ERR_WRITE = 6,         // target folder missing, temporary file not writable, target not replaceable, a
                              // junction or link on the way or at the target
    HZ_ERR_KEPT = 7,          // target exists and was kept (no -n, and the user declined, -q forbade asking, or
                              // it appeared while the member was unpacked)
    HZ_ERR_MEMORY = 8         // the decoder's state could not be allocated
};

// Size of each of the two streaming buffers (input and output); files of any size pass through them.
#define HZ_BUFFER_SIZE (256u * 1024u)

// Compression methods understood.
#define HZ_METHOD_STORED 0
#define HZ_METHOD_DEFLATE 8

// ---- Types --------------------------------------------------------------------------------------------------

// What the command line asks for.
typedef struct HzCommand {
    char archive[MAX_PATH];  // archive path as given (a trailing "." is left to the system)
    char folder[MAX_PATH];   // target folder, always ending in a backslash
    int quiet;               // -q: never show anything
    int noAsk;               // -n: replace an existing target without asking
    int givenTemp;           // -t: the temporary file's random part is tempPart, and no other name is tried
    uint32_t tempPart;
} HzCommand;

// The one file entry of an archive, checked against the central directory and the local header.
typedef struct HzEntry {
    char name[MAX_PATH];     // safe base name to write in the target folder
    unsigned method;         // HZ_METHOD_STORED or HZ_METHOD_DEFLATE
    uint32_t crc;            // CRC-32 of the unpacked data
    uint64_t packedSize;     // bytes of (compressed) data in the archive
    uint64_t size;           // bytes once unpacked
    uint64_t dataOffset;     // where the (compressed) data begins in the archive
    uint16_t dosTime;        // modification time, MS-DOS format, local time
    uint16_t dosDate;
    int hasUnixTime;         // an extended timestamp (UTC) was stored
    int64_t unixTime;        // its modification time, seconds since 1970
} HzEntry;

// ---- Functions ----------------------------------------------------------------------------------------------

// cmdline.cpp
int HZ_ParseCommandLine(const char *line, HzCommand *command);

// zipread.cpp
int HZ_ReadAt(HANDLE file, uint64_t offset, void *buffer, size_t count);
int HZ_ReadArchive(HANDLE file, HzEntry *entry);

// names.cpp
int HZ_SafeBaseName(const char *stored, size_t length, int utf8, char *out, size_t capacity);

// decode.cpp
int HZ_Decode(HANDLE archive, const HzEntry *entry, HANDLE target);

// extract.cpp
int HZ_TargetPath(const char *folder, const char *name, char *out, size_t capacity);
int HZ_Extract(HANDLE archive, const HzEntry *entry, const char *folder, int replace, const uint32_t *tempPart);

// random.cpp (a test build links a fixed one instead)
unsigned int HZ_RandomPart(int attempt);

#endif
