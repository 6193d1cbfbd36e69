#include <QGuiApplication>
#include <cstdio>
#include <string_view>

#include "assets/AppIcon.h"
#include "assets/AssetGenerator.h"

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc == 3 && std::string_view(argv[1]) == "--icons")
        return zw::generateIcons(argv[2]) ? 0 : 1;
    if (argc != 3) {
        std::fprintf(stderr, "Aufruf: zettelwerk-assets ZIELORDNER INHALTSORDNER | --icons ZIELORDNER\n");
        return 2;
    }
    return zw::generateDistribution(argv[1], argv[2]) ? 0 : 1;
}
