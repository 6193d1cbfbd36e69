#include "app/MailPassword.h"

#include "core/Settings.h"

namespace zw {
namespace {

MailPassword plainTextOnly(nullptr);
MailPassword* installed = nullptr;

} // namespace

MailPassword& mailPassword()
{
    return installed != nullptr ? *installed : plainTextOnly;
}

void installMailPassword(MailPassword* keeper)
{
    installed = keeper;
}

std::string MailPassword::read(const Settings& settings) const
{
    std::string plain = settings.get(kApplicationName, "EMail", "Passwort", "");
    if (!plain.empty() || m_keyring == nullptr)
        return plain;
    return m_keyring->read(kMailPasswordKey).value_or("");
}

void MailPassword::save(Settings& settings, const std::string& password)
{
    const bool inKeyring = m_keyring != nullptr && m_keyring->write(kMailPasswordKey, password);
    settings.save(kApplicationName, "EMail", "Passwort", inKeyring ? "" : password);
    m_keptInPlainText = m_keyring != nullptr && !inKeyring;
}

std::string MailPassword::takePlainTextNotice()
{
    if (!m_keptInPlainText || m_told)
        return "";
    m_told = true;
    return "Es ist kein Schlüsselbund erreichbar. Das Passwort wird deshalb wie bisher im Klartext in der "
           "Einstellungsdatei gespeichert.";
}

} // namespace zw
