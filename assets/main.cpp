#include <QGuiApplication>
#include <cstdio>

#include "assets/AssetGenerator.h"

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "Aufruf: zettelwerk-assets ZIELORDNER\n");
        return 2;
    }
    return zw::generateDistribution(argv[1]) ? 0 : 1;
}
