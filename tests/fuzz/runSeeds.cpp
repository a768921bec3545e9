#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size);

// Gives every file of a folder to the reader, without the fuzzer. Usage: fuzz_READER FOLDER
int main(int count, char **arguments)
{
    int seeds = 0;
    for (const auto &entry : std::filesystem::directory_iterator(count > 1 ? arguments[1] : ".")) {
        std::printf("%s\n", entry.path().filename().c_str());
        std::fflush(stdout); // names the one that ends the program
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes { std::istreambuf_iterator<char>(file), {} };
        LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size());
        ++seeds;
    }
    return seeds > 0 ? 0 : 1;
}
