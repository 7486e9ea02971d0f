#include "link/PlainFiles.h"

#include "link/FolderEntries.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <random>

namespace vk {

namespace {

constexpr std::string_view TemporaryMark = ".vk";
constexpr std::string_view TemporaryEnd = ".tmp";
constexpr std::size_t TemporaryDigits = 8;

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    ~FileDescriptor()
    {
        if (fd_ >= 0)
            ::close(fd_);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int Get() const { return fd_; }
    // Closes now and tells whether the close succeeded.
    bool Close()
    {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0;
    }

private:
    int fd_;
};

PlainFileContent Refused(const std::string& path, const std::string& reason)
{
    ReportRefusedEntry(path, reason);
    return PlainFileContent{ReadOutcome::Refused, {}, false};
}

// Reads up to `bound` bytes of an open regular file.
PlainFileContent ReadOpenFile(int fd, std::size_t size, std::size_t bound)
{
    PlainFileContent content{ReadOutcome::Read, {}, size > bound};
    content.Bytes.resize(size < bound ? size : bound);
    std::size_t done = 0;
    while (done < content.Bytes.size()) {
        const ssize_t got = ::read(fd, content.Bytes.data() + done, content.Bytes.size() - done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return PlainFileContent{ReadOutcome::Unreadable, {}, false};
        if (got == 0)
            break; // the file became shorter while it was read
        done += static_cast<std::size_t>(got);
    }
    content.Bytes.resize(done);
    return content;
}

std::string RandomDigits()
{
    static std::mt19937_64 generator{std::random_device{}() ^ static_cast<std::uint64_t>(::getpid())};
    std::array<char, TemporaryDigits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", static_cast<unsigned>(generator() & 0xFFFFFFFFu));
    return std::string(digits.data(), TemporaryDigits);
}

bool WriteAll(int fd, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

} // namespace

PlainFileContent ReadPlainFile(const std::string& path, std::size_t bound)
{
    // A look at the entry itself refuses links, pipes and devices before
    // anything is opened; the open and fstat below catch an entry that was
    // swapped for one of those in between.
    const EntryType type = TypeOfEntry(path);
    if (type == EntryType::Missing)
        return PlainFileContent{};
    if (type != EntryType::RegularFile)
        return Refused(path, DescribeEntryType(type));

    const int fd = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT)
            return PlainFileContent{};
        if (errno == ELOOP)
            return Refused(path, "symbolic link");
        if (errno == ENXIO)
            return Refused(path, "socket");
        return PlainFileContent{ReadOutcome::Unreadable, {}, false};
    }
    FileDescriptor file(fd);
    struct stat info {};
    if (::fstat(fd, &info) != 0)
        return PlainFileContent{ReadOutcome::Unreadable, {}, false};
    if (!S_ISREG(info.st_mode))
        return Refused(path, "not a regular file");
    return ReadOpenFile(fd, static_cast<std::size_t>(info.st_size), bound);
}

bool PublishPlainFile(const std::string& path, std::string_view content, Durability durability)
{
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.empty())
        return false;

    std::string temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 8 && fd < 0; ++attempt) {
        temporary = folder + "." + name + std::string(TemporaryMark) + RandomDigits() + std::string(TemporaryEnd);
        fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return false;
    }
    if (fd < 0)
        return false;
    FileDescriptor file(fd);
    bool written = WriteAll(fd, content);
    if (written && durability == Durability::OnDisk)
        written = ::fsync(fd) == 0;
    if (!file.Close() || !written || ::rename(temporary.c_str(), path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    if (durability == Durability::OnDisk) {
        // The rename itself reaches the disk with the folder's entry.
        const int dir = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (dir >= 0) {
            ::fsync(dir);
            ::close(dir);
        }
    }
    return true;
}

bool IsTemporaryOf(std::string_view name, std::string_view prefix)
{
    const std::size_t tail = TemporaryMark.size() + TemporaryDigits + TemporaryEnd.size();
    if (prefix.empty() || name.size() < 1 + prefix.size() + tail)
        return false;
    if (name.front() != '.' || name.substr(1, prefix.size()) != prefix)
        return false;
    const std::string_view end = name.substr(name.size() - tail);
    if (end.substr(0, TemporaryMark.size()) != TemporaryMark || end.substr(end.size() - TemporaryEnd.size()) != TemporaryEnd)
        return false;
    for (const char c : end.substr(TemporaryMark.size(), TemporaryDigits))
        if (!IsHexDigit(c))
            return false;
    return true;
}

} // namespace vk
