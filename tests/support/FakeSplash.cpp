// Takes the splash program's place: prints its arguments and ends when its parent has gone.
#include <cstdio>

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
        std::puts(argv[i]);
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
}
