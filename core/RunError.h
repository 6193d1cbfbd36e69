#pragma once

#include <stdexcept>
#include <string>

namespace zw {

// A fault of the kind the old run time raised: a number and its German description. Routines that trap
// faults show both (the error window); an untrapped one reaches a message box and the program goes on.
class RunError : public std::runtime_error
{
public:
    RunError(int number, std::string description);

    int number() const noexcept { return m_number; }
    const std::string& description() const noexcept { return m_description; }

    static RunError invalidCall();                                  // 5
    static RunError overflow();                                     // 6
    static RunError divisionByZero();                               // 11
    static RunError typeMismatch();                                 // 13
    static RunError fileNotFound();                                 // 53
    static RunError fileExists();                                   // 58
    static RunError inputPastEnd();                                 // 62
    static RunError pathNotFound();                                 // 76
    static RunError permissionDenied();                             // 70
    static RunError diskFull();                                     // 61
    static RunError pathFileAccess();                               // 75
    static RunError invalidPicture();                               // 481
    static RunError subscriptOutOfRange();                          // 9
    static RunError printerUnavailable(const std::string& printer); // 482
    static RunError printerFault();                                 // 482

private:
    int m_number;
    std::string m_description;
};

} // namespace zw
