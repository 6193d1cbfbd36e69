#pragma once

#include "tests/ui/ModalCloser.h"

namespace zw::test {

// A closer that answers message boxes alone (their "no", or closes them) and leaves every other window to the
// test, for the tests of nested modal windows beside `inModal`; its `inspect` takes the box as a reference.
class MessageAnswerer : public ModalCloser
{
public:
    MessageAnswerer() : ModalCloser([this](QDialog* box) { if (inspect) inspect(*box); }, true) {}
    std::function<void(QDialog&)> inspect; // runs while the box is up
};

} // namespace zw::test
