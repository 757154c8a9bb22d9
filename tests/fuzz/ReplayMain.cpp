#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

// Runs a fuzzer's function once for every file that is named, and for every file of a folder that is named.
// Fails when a file cannot be read and when there is none: a replay of nothing would pass unnoticed.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace files = std::filesystem;

bool replay(const files::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    const std::vector<char> content { std::istreambuf_iterator<char>(stream), {} };
    if (!stream.is_open() || stream.bad()) {
        (void)std::fprintf(stderr, "%s cannot be read\n", path.c_str());
        return false;
    }
    // Of exactly the input's size, so that a sanitizer sees the first byte read beyond it.
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    (void)LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    return true;
}

std::vector<files::path> filesAt(const files::path& path)
{
    std::error_code error;
    if (!files::is_directory(path, error))
        return { path };
    std::vector<files::path> found;
    for (auto entry = files::directory_iterator(path, error); entry != files::directory_iterator();
         entry.increment(error))
        if (entry->is_regular_file(error))
            found.push_back(entry->path());
    return found;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    std::size_t replayed = 0;
    for (int i = 1; i < argumentCount; ++i)
        for (const files::path& path : filesAt(arguments[i])) {
            if (!replay(path))
                return 1;
            ++replayed;
        }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 1 : 0;
}
