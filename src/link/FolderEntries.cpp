#include "link/FolderEntries.h"

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace vk {

namespace {

EntryType TypeOfMode(mode_t mode)
{
    if (S_ISREG(mode))
        return EntryType::RegularFile;
    if (S_ISLNK(mode))
        return EntryType::SymbolicLink;
    if (S_ISDIR(mode))
        return EntryType::Directory;
    if (S_ISFIFO(mode))
        return EntryType::NamedPipe;
    if (S_ISSOCK(mode))
        return EntryType::Socket;
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return EntryType::Device;
    return EntryType::Other;
}

// The type a directory listing gives, or Missing when it gives none and
// lstat has to tell.
EntryType TypeOfDirent(unsigned char type)
{
    switch (type) {
    case DT_REG: return EntryType::RegularFile;
    case DT_LNK: return EntryType::SymbolicLink;
    case DT_DIR: return EntryType::Directory;
    case DT_FIFO: return EntryType::NamedPipe;
    case DT_SOCK: return EntryType::Socket;
    case DT_CHR:
    case DT_BLK: return EntryType::Device;
    default: return EntryType::Missing;
    }
}

// Length of the UTF-8 sequence that starts with `lead`, or 0 for a byte that
// can't start one.
std::size_t SequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

bool IsUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = SequenceLength(lead);
        if (length == 0 || i + length > text.size())
            return false;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80)
                return false;
        if (length == 3) {
            const auto second = static_cast<unsigned char>(text[i + 1]);
            if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0))
                return false; // overlong, or a surrogate
        }
        if (length == 4) {
            const auto second = static_cast<unsigned char>(text[i + 1]);
            if ((lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90))
                return false; // overlong, or beyond U+10FFFF
        }
        i += length;
    }
    return true;
}

RefusedEntryHandler& Handler()
{
    static RefusedEntryHandler handler;
    return handler;
}

} // namespace

EntryType TypeOfEntry(const std::string& path)
{
    struct stat info {};
    if (path.empty() || ::lstat(path.c_str(), &info) != 0)
        return EntryType::Missing;
    return TypeOfMode(info.st_mode);
}

const char* DescribeEntryType(EntryType type)
{
    switch (type) {
    case EntryType::Missing: return "missing";
    case EntryType::RegularFile: return "regular file";
    case EntryType::SymbolicLink: return "symbolic link";
    case EntryType::Directory: return "directory";
    case EntryType::NamedPipe: return "named pipe";
    case EntryType::Socket: return "socket";
    case EntryType::Device: return "device";
    case EntryType::Other: break;
    }
    return "not a regular file";
}

std::vector<FolderEntry> ListFolder(const std::string& folder)
{
    std::vector<FolderEntry> entries;
    if (folder.empty())
        return entries;
    const std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(folder.c_str()), &::closedir);
    if (!dir)
        return entries;
    while (const dirent* entry = ::readdir(dir.get())) {
        const std::string_view name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        EntryType type = TypeOfDirent(entry->d_type);
        if (type == EntryType::Missing) {
            struct stat info {};
            if (::fstatat(::dirfd(dir.get()), entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            type = TypeOfMode(info.st_mode);
        }
        entries.push_back(FolderEntry{std::string(name), type});
    }
    return entries;
}

std::string UnsafeNameReason(std::string_view name)
{
    if (name.empty())
        return "empty name";
    if (name.find('/') != std::string_view::npos || name.find('\\') != std::string_view::npos)
        return "name with a path separator";
    if (name.find("..") != std::string_view::npos)
        return "name with \"..\"";
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F)
            return "name with a control character";
    }
    if (!IsUtf8(name))
        return "name that is not UTF-8";
    return {};
}

bool RemoveEntry(const std::string& path)
{
    if (path.empty())
        return false;
    if (::unlink(path.c_str()) == 0)
        return true;
    return errno == ENOENT;
}

bool NameMatches(std::string_view name, std::string_view pattern)
{
    return ::fnmatch(std::string(pattern).c_str(), std::string(name).c_str(), FNM_CASEFOLD) == 0;
}

void SetRefusedEntryHandler(RefusedEntryHandler handler)
{
    Handler() = std::move(handler);
}

void ReportRefusedEntry(const std::string& path, const std::string& reason)
{
    if (Handler())
        Handler()(path, reason);
}

} // namespace vk
