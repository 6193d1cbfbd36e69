#include "lists/WindowResize.h"

#include <algorithm>

namespace zw {
namespace {

int percentOf(int size, int designed) { return designed > 0 ? size * 100 / designed : 100; }

// The smallest size whose whole per cent of `designed` scales `length` to at least `needed`.
int smallestSizeKeeping(int length, int designed, int needed)
{
    if (length <= 0 || needed <= 0)
        return 0;
    const int percent = (needed * 100 + length - 1) / length;
    return (percent * designed + 99) / 100;
}

} // namespace

ControlBox scaledBox(const ControlBox& designed, ClientSize designedClient, ClientSize client)
{
    const int across = percentOf(client.width, designedClient.width);
    const int down = percentOf(client.height, designedClient.height);
    return {designed.left * across / 100, designed.top * down / 100, designed.width * across / 100,
            designed.height * down / 100};
}

ClientSize smallestClientKeeping(const ControlBox& designed, ClientSize designedClient, ClientSize needed)
{
    return {smallestSizeKeeping(designed.width, designedClient.width, needed.width),
            smallestSizeKeeping(designed.height, designedClient.height, needed.height)};
}

} // namespace zw
