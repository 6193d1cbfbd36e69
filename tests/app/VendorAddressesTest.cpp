#include "app/VendorAddresses.h"

#include <fstream>
#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

TEST(VendorAddresses, BuiltInAddressesStayOnTheReservedDomainWithoutAFile)
{
    test::TempFolder folder;
    auto addresses = vendorAddresses(ProgramPaths(folder.path()));
    for (const std::string* address : {&addresses.webHome, &addresses.ratingForm, &addresses.errorForm,
                                       &addresses.mailHost, &addresses.supportAddress, &addresses.updateServer}) {
        SCOPED_TRACE(*address);
        EXPECT_NE(address->find("zettelwerk.example"), std::string::npos);
    }
}

TEST(VendorAddresses, FileOverridesSingleValuesAndPassesOverWhatItDoesNotKnow)
{
    test::TempFolder folder;
    std::ofstream(folder.path() / "vendor.ini", std::ios::binary)
        << "# test servers\r\n"
           "mailHost = 127.0.0.1:2525\r\n"
           "supportAddress=hilfe@example.org\n"
           "unknownKey=x\r\n"
           "webHome\r\n"
           "updateServer=http://127.0.0.1:8080/a=b\r\n";
    auto addresses = vendorAddresses(ProgramPaths(folder.path()));
    EXPECT_EQ(addresses.mailHost, "127.0.0.1:2525");
    EXPECT_EQ(addresses.supportAddress, "hilfe@example.org");
    EXPECT_EQ(addresses.updateServer, "http://127.0.0.1:8080/a=b") << "only the first '=' splits";
    EXPECT_EQ(addresses.webHome, VendorAddresses{}.webHome) << "a line without '=' changes nothing";
}

} // namespace
} // namespace zw
