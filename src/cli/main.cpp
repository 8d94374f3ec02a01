#include <cstdio>

int main(int, char**)
{
    std::puts("quillary-cli");
    return 0;
}
