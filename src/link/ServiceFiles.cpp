#include "link/ServiceFiles.h"

namespace vk {

bool IsServiceFile(std::string_view fileName)
{
    if (!fileName.empty() && fileName.front() == '.')
        return true;
    return fileName.find(".sync-conflict-") != std::string_view::npos ||
           fileName.find(" (conflicted copy") != std::string_view::npos;
}

} // namespace vk
