// Writes one member as a zip archive that holds exactly one file, the form the unpacker expects.
// The file is streamed through fixed buffers, deflated; when deflating does not make it smaller the
// archive is written again with the file stored. Zip64 fields are used exactly when a size or the
// central directory's offset does not fit 32 bits. Every member of a package carries the package's
// compile date as its time stamp, so that the same inputs always give the same bytes.
#include "hopack.h"

#include <fstream>
#include <system_error>

#include <zlib.h>

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;
constexpr std::uint16_t kMethodStored = 0;
constexpr std::uint16_t kMethodDeflated = 8;
constexpr std::uint16_t kExternalArchiveBit = 0x20;

struct EntryInfo {
    std::string name;
    std::uint16_t method = kMethodDeflated;
    std::uint16_t dosTime = 0;
    std::uint16_t dosDate = 0;
    std::uint32_t crc = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t size = 0;
    bool zip64 = false;
};

class Bytes {
public:
    void U16(std::uint32_t v) { for (int i = 0; i < 2; ++i) data.push_back(char((v >> (8 * i)) & 0xFF)); }
    void U32(std::uint32_t v) { for (int i = 0; i < 4; ++i) data.push_back(char((v >> (8 * i)) & 0xFF)); }
    void U64(std::uint64_t v) { for (int i = 0; i < 8; ++i) data.push_back(char((v >> (8 * i)) & 0xFF)); }
    void Text(const std::string& s) { data += s; }
    std::string data;
};

std::uint16_t VersionNeeded(const EntryInfo& e)
{
    if (e.zip64) return 45;
    return e.method == kMethodDeflated ? 20 : 10;
}

std::uint32_t Size32(std::uint64_t v, bool zip64) { return zip64 ? 0xFFFFFFFFu : std::uint32_t(v); }

// The Zip64 extra field: in the local header it must hold both sizes, and the central header
// holds the same two, since both are marked 0xFFFFFFFF there (the offset is always 0).
void Zip64Extra(Bytes& b, const EntryInfo& e)
{
    b.U16(0x0001);
    b.U16(16);
    b.U64(e.size);
    b.U64(e.packedSize);
}

std::string LocalHeader(const EntryInfo& e)
{
    Bytes b;
    b.U32(0x04034b50);
    b.U16(VersionNeeded(e));
    b.U16(0);  // flags: sizes are in the header, no data descriptor
    b.U16(e.method);
    b.U16(e.dosTime);
    b.U16(e.dosDate);
    b.U32(e.crc);
    b.U32(Size32(e.packedSize, e.zip64));
    b.U32(Size32(e.size, e.zip64));
    b.U16(std::uint16_t(e.name.size()));
    b.U16(e.zip64 ? 20 : 0);
    b.Text(e.name);
    if (e.zip64) Zip64Extra(b, e);
    return b.data;
}

std::string CentralDirectory(const EntryInfo& e, std::uint64_t cdOffset)
{
    Bytes b;
    b.U32(0x02014b50);
    b.U16(VersionNeeded(e));  // made by: MS-DOS host, the same version as needed
    b.U16(VersionNeeded(e));
    b.U16(0);
    b.U16(e.method);
    b.U16(e.dosTime);
    b.U16(e.dosDate);
    b.U32(e.crc);
    b.U32(Size32(e.packedSize, e.zip64));
    b.U32(Size32(e.size, e.zip64));
    b.U16(std::uint16_t(e.name.size()));
    b.U16(e.zip64 ? 20 : 0);
    b.U16(0);  // comment
    b.U16(0);  // disk
    b.U16(0);  // internal attributes
    b.U32(kExternalArchiveBit);
    b.U32(0);  // the local header is at offset 0
    b.Text(e.name);
    if (e.zip64) Zip64Extra(b, e);
    const std::uint64_t cdSize = b.data.size();
    const bool offset64 = cdOffset >= kZip32Limit;
    if (offset64) {
        const std::uint64_t zip64End = cdOffset + cdSize;
        b.U32(0x06064b50);
        b.U64(44);
        b.U16(45);
        b.U16(45);
        b.U32(0);
        b.U32(0);
        b.U64(1);
        b.U64(1);
        b.U64(cdSize);
        b.U64(cdOffset);
        b.U32(0x07064b50);
        b.U32(0);
        b.U64(zip64End);
        b.U32(1);
    }
    b.U32(0x06054b50);
    b.U16(0);
    b.U16(0);
    b.U16(1);
    b.U16(1);
    b.U32(std::uint32_t(cdSize));
    b.U32(offset64 ? 0xFFFFFFFFu : std::uint32_t(cdOffset));
    b.U16(0);
    return b.data;
}

struct Streams {
    std::ifstream in;
    std::ofstream out;
    std::vector<char> inBuffer = std::vector<char>(kBufferSize);
    std::vector<char> outBuffer = std::vector<char>(kBufferSize);
};

bool Write(std::ofstream& out, const char* data, std::size_t size)
{
    out.write(data, std::streamsize(size));
    return bool(out);
}

// Deflates the whole source after the header; returns the packed size, CRC and bytes read.
bool DeflateBody(Streams& s, EntryInfo& e, std::string& problem)
{
    z_stream z{};
    if (deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        problem = "the compressor could not start";
        return false;
    }
    std::uint32_t crc = crc32(0L, Z_NULL, 0);
    std::uint64_t read = 0, packed = 0;
    int flush = Z_NO_FLUSH;
    bool good = true;
    while (good && flush != Z_FINISH) {
        s.in.read(s.inBuffer.data(), std::streamsize(s.inBuffer.size()));
        const std::size_t got = std::size_t(s.in.gcount());
        if (s.in.bad()) { problem = "reading the source failed"; good = false; break; }
        flush = s.in.eof() ? Z_FINISH : Z_NO_FLUSH;
        crc = crc32(crc, reinterpret_cast<const Bytef*>(s.inBuffer.data()), uInt(got));
        read += got;
        z.next_in = reinterpret_cast<Bytef*>(s.inBuffer.data());
        z.avail_in = uInt(got);
        do {
            z.next_out = reinterpret_cast<Bytef*>(s.outBuffer.data());
            z.avail_out = uInt(s.outBuffer.size());
            deflate(&z, flush);
            const std::size_t have = s.outBuffer.size() - z.avail_out;
            packed += have;
            if (!Write(s.out, s.outBuffer.data(), have)) { problem = "writing the member failed"; good = false; break; }
        } while (z.avail_out == 0);
    }
    deflateEnd(&z);
    e.crc = crc;
    e.packedSize = packed;
    e.size = read;
    return good;
}

// Copies the source as it is after the header (the stored form).
bool StoreBody(Streams& s, EntryInfo& e, std::string& problem)
{
    std::uint32_t crc = crc32(0L, Z_NULL, 0);
    std::uint64_t read = 0;
    while (s.in) {
        s.in.read(s.inBuffer.data(), std::streamsize(s.inBuffer.size()));
        const std::size_t got = std::size_t(s.in.gcount());
        if (s.in.bad()) { problem = "reading the source failed"; return false; }
        crc = crc32(crc, reinterpret_cast<const Bytef*>(s.inBuffer.data()), uInt(got));
        read += got;
        if (!Write(s.out, s.inBuffer.data(), got)) { problem = "writing the member failed"; return false; }
    }
    e.crc = crc;
    e.packedSize = read;
    e.size = read;
    return true;
}

bool Open(Streams& s, const fs::path& source, const fs::path& target, std::string& problem)
{
    s.in.close();
    s.out.close();
    s.in.clear();
    s.out.clear();
    s.in.open(source, std::ios::binary);
    if (!s.in) { problem = "cannot open the source"; return false; }
    s.out.open(target, std::ios::binary | std::ios::trunc);
    if (!s.out) { problem = "cannot create the member"; return false; }
    return true;
}

// One attempt with one method: header, body, header again with the real values, directory.
bool WriteArchive(Streams& s, const fs::path& source, const fs::path& target, EntryInfo& e,
                  std::uint64_t expected, std::string& problem)
{
    if (!Open(s, source, target, problem)) return false;
    const std::string placeholder = LocalHeader(e);
    if (!Write(s.out, placeholder.data(), placeholder.size())) { problem = "writing the member failed"; return false; }
    const bool body = e.method == kMethodDeflated ? DeflateBody(s, e, problem) : StoreBody(s, e, problem);
    if (!body) return false;
    if (e.size != expected) { problem = "the source changed while it was packed"; return false; }
    const std::uint64_t cdOffset = placeholder.size() + e.packedSize;
    const std::string header = LocalHeader(e);  // same length: only values changed
    const std::string directory = CentralDirectory(e, cdOffset);
    s.out.seekp(0);
    if (!Write(s.out, header.data(), header.size())) { problem = "writing the member failed"; return false; }
    s.out.seekp(std::streamoff(cdOffset));
    if (!Write(s.out, directory.data(), directory.size())) { problem = "writing the member failed"; return false; }
    s.out.close();
    if (!s.out) { problem = "closing the member failed"; return false; }
    return true;
}

} // namespace

bool WriteZipMember(const fs::path& source, const fs::path& target, const std::string& storedName,
                    const std::string& compileDate, ZipResult& result, Diagnostics& diag)
{
    std::error_code ec;
    const std::uint64_t expected = fs::file_size(source, ec);
    if (ec) {
        diag.error(source.string() + ": cannot read its size: " + ec.message());
        return false;
    }
    int year = 1980, month = 1, day = 1;
    ParseCompileDate(compileDate, year, month, day);
    EntryInfo e;
    e.name = storedName;
    e.dosDate = std::uint16_t(((year - 1980) << 9) | (month << 5) | day);
    e.zip64 = expected >= kZip32Limit;
    Streams streams;
    std::string problem;
    bool ok = WriteArchive(streams, source, target, e, expected, problem);
    if (ok && e.packedSize >= e.size) {
        // Deflate did not help (already packed data, or an empty file): store the file instead.
        e.method = kMethodStored;
        ok = WriteArchive(streams, source, target, e, expected, problem);
    }
    if (!ok) {
        streams.out.close();
        fs::remove(target, ec);
        diag.error(source.string() + ": packing into " + target.string() + " failed: " + problem);
        return false;
    }
    result.size = e.size;
    result.memberSize = fs::file_size(target, ec);
    return true;
}
