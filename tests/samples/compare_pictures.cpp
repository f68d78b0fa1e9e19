// compare_pictures A.png B.png: prints how two pictures differ: the share of changed pixels, the
// mean difference, the solid pixels and the share of tinted ones. For make_references.py.

#include <cstdio>

#include "picture.h"

int main(int count, char** arguments) {
    if (count != 3) return 2;
    const Picture a = readPng(arguments[1]);
    const Picture b = readPng(arguments[2]);
    if (a.pixels.empty() || a.width != b.width || a.height != b.height) return 1;
    const Difference difference = differenceOf(a, b);
    std::printf("%.6f %.4f %d %.6f %d\n", difference.changed, difference.mean, difference.solid,
                difference.tint, difference.count);
    return 0;
}
