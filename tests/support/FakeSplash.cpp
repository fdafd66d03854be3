// Takes the splash program's place: prints its arguments, and ends at once when it finds nothing of the
// plugins, else when its parent has gone.
#include <cstdio>
#include <filesystem>

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
        std::puts(argv[i]);
    std::fflush(stdout);
    if (argc < 2 || !std::filesystem::exists(argv[1]))
        return 1;
    while (std::getchar() != EOF) {
    }
}
