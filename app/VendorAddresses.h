#pragma once

#include <string>

namespace zw {

class ProgramPaths;

// The vendor's fixed addresses: web pages, mail host, support and newsletter addresses, update server.
// The reserved domain stands in for them; a vendor.ini in the program folder ("key=value" lines with the member
// names as keys) overrides single values, so that tests can point them at local servers.
struct VendorAddresses
{
    std::string webHome = "https://www.zettelwerk.example/";
    std::string webDownloads = "https://www.zettelwerk.example/download/";
    std::string webNews = "https://www.zettelwerk.example/neuigkeiten/";
    std::string ratingForm = "https://www.zettelwerk.example/formulare/bewertung.php";
    std::string errorForm = "https://www.zettelwerk.example/formulare/fehlermeldung.php";
    std::string mailHost = "mail.zettelwerk.example";
    std::string supportAddress = "support@zettelwerk.example";
    std::string newsletterAddress = "newsletter@zettelwerk.example";
    std::string updateServer = "http://update.zettelwerk.example/";
    std::string versionPage = "https://www.zettelwerk.example/version/";
};

// The built-in addresses with the overrides of ProgramPath/vendor.ini applied; a missing file changes nothing.
VendorAddresses vendorAddresses(const ProgramPaths& paths);

} // namespace zw
