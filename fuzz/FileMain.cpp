// Replaces the fuzzer: passes the content of files to the fuzz target. The arguments are files, or folders of files.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        if (fs::is_directory(argv[i]))
            files.insert(files.end(), fs::recursive_directory_iterator(argv[i]), {});
        else
            files.emplace_back(argv[i]);
    }
    for (const fs::path& path : files) {
        std::ifstream file(path, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    }
    std::printf("%zu files\n", files.size());
    return files.empty() ? 1 : 0;
}
