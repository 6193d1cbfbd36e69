#pragma once

namespace zw {

// The module resize: a control's place as the window was designed, scaled by the window's client size against the
// designed one. Ratios are whole per cent and every coordinate is divided as integers, as the old module did, so
// resizing twice to one size changes nothing further.
struct ControlBox
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

struct ClientSize
{
    int width = 0;
    int height = 0;
};

ControlBox scaledBox(const ControlBox& designed, ClientSize designedClient, ClientSize client);

// The smallest client size at which a control scaled from `designed` is still `needed` wide and high, so that a
// text the control must show whole is never cut.
ClientSize smallestClientKeeping(const ControlBox& designed, ClientSize designedClient, ClientSize needed);

} // namespace zw
