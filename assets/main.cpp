#include <QGuiApplication>
#include <cstdio>

#include "assets/AssetGenerator.h"

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "Aufruf: zettelwerk-assets ZIELORDNER INHALTSORDNER\n");
        return 2;
    }
    return zw::generateDistribution(argv[1], argv[2]) ? 0 : 1;
}
