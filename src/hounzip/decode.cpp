// Streams the member's data from the archive to the (temporary) target file through two fixed buffers, stored or
// deflated, and checks length and CRC-32 on the way. Files of many GiB pass without ever being held in memory;
// sizes are counted in 64 bits because zlib's own totals are 32-bit on Windows.
#include "hounzip.h"

#include <zlib.h>

static unsigned char g_in[HZ_BUFFER_SIZE];
static unsigned char g_out[HZ_BUFFER_SIZE];

// Writes all count bytes. Returns true on success.
static int WriteAll(HANDLE file, const unsigned char *data, size_t count)
{
    while (count > 0) {
        DWORD written = 0;
        if (!WriteFile(file, data, (DWORD)count, &written, NULL) || written == 0)
            return 0;
        data += written;
        count -= written;
    }
    return 1;
}

// Reads the next piece of packed data (at most one buffer) starting at *offset; *remaining counts down.
static int ReadPacked(HANDLE archive, uint64_t *offset, uint64_t *remaining, size_t *got)
{
    size_t chunk = *remaining < HZ_BUFFER_SIZE ? (size_t)*remaining : HZ_BUFFER_SIZE;
    if (!HZ_ReadAt(archive, *offset, g_in, chunk))
        return 0;
    *offset += chunk;
    *remaining -= chunk;
    *got = chunk;
    return 1;
}

static int CopyStored(HANDLE archive, const HzEntry *entry, HANDLE target, uint32_t *crc)
{
    uint64_t offset = entry->dataOffset, remaining = entry->packedSize;
    while (remaining > 0) {
        size_t got = 0;
        if (!ReadPacked(archive, &offset, &remaining, &got))
            return HZ_ERR_OPEN;
        *crc = (uint32_t)crc32(*crc, g_in, (uInt)got);
        if (!WriteAll(target, g_in, got))
            return HZ_ERR_WRITE;
    }
    return HZ_OK;
}

// Inflates the raw deflate stream. The stream must end exactly at the end of the packed data and produce exactly
// the stored size; more output than announced is refused at once rather than written.
static int Inflate(HANDLE archive, const HzEntry *entry, HANDLE target, uint32_t *crc)
{
    z_stream stream;
    ZeroMemory(&stream, sizeof(stream));
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return HZ_ERR_MEMORY;

    uint64_t offset = entry->dataOffset, remaining = entry->packedSize, produced = 0;
    int result = HZ_OK;
    for (;;) {
        if (stream.avail_in == 0 && remaining > 0) {
            size_t got = 0;
            if (!ReadPacked(archive, &offset, &remaining, &got)) {
                result = HZ_ERR_OPEN;
                break;
            }
            stream.next_in = g_in;
            stream.avail_in = (uInt)got;
        }
        stream.next_out = g_out;
        stream.avail_out = HZ_BUFFER_SIZE;
        int status = inflate(&stream, Z_NO_FLUSH);
        size_t count = HZ_BUFFER_SIZE - stream.avail_out;
        produced += count;
        if (produced > entry->size) {
            result = HZ_ERR_DATA;
            break;
        }
        *crc = (uint32_t)crc32(*crc, g_out, (uInt)count);
        if (count > 0 && !WriteAll(target, g_out, count)) {
            result = HZ_ERR_WRITE;
            break;
        }
        if (status == Z_STREAM_END) {
            if (stream.avail_in != 0 || remaining != 0)
                result = HZ_ERR_DATA;  // bytes left over behind the end of the stream
            break;
        }
        if (status == Z_MEM_ERROR) {
            result = HZ_ERR_MEMORY;
            break;
        }
        // A data error, or a stream that still wants input when the packed data is used up.
        if ((status != Z_OK && status != Z_BUF_ERROR) || (stream.avail_in == 0 && remaining == 0 && count == 0)) {
            result = HZ_ERR_DATA;
            break;
        }
    }
    inflateEnd(&stream);
    if (result == HZ_OK && produced != entry->size)
        result = HZ_ERR_DATA;
    return result;
}

// Writes the member's data to target (positioned at its start). Returns HZ_OK only when the data was complete,
// of the stored length, and matched the stored CRC-32.
int HZ_Decode(HANDLE archive, const HzEntry *entry, HANDLE target)
{
    uint32_t crc = (uint32_t)crc32(0L, Z_NULL, 0);
    int result = entry->method == HZ_METHOD_STORED ? CopyStored(archive, entry, target, &crc)
                                                   : Inflate(archive, entry, target, &crc);
    if (result == HZ_OK && crc != entry->crc)
        result = HZ_ERR_DATA;
    return result;
}
