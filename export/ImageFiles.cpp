#include "export/ImageFiles.h"

#include <QBuffer>
#include <QByteArray>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QMimeDatabase>
#include <algorithm>
#include <array>
#include <cstring>

#include "app/AtomicFile.h"
#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::array<std::string_view, 21> kStatusMessages = {
    "Ok.",
    "Generic Error.",
    "Invalid Parameter.",
    "Out Of Memory.",
    "Object Busy.",
    "Insufficient Buffer.",
    "Not Implemented.",
    "Win32 Error.",
    "Wrong State.",
    "Aborted.",
    "File Not Found.",
    "Value Overflow.",
    "Access Denied.",
    "Unknown Image Format.",
    "FontFamily Not Found.",
    "FontStyle Not Found.",
    "Not TrueType Font.",
    "Unsupported Gdiplus Version.",
    "Gdiplus Not Initialized.",
    "Property Not Found.",
    "Property Not Supported.",
};

std::string_view mimeTypeOf(PictureFormat format) { return format == PictureFormat::Jpeg ? "image/jpeg" : "image/png"; }

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
           });
}

// The file system's failures in the table's words.
int statusOfWriteError(const RunError& error)
{
    switch (error.number()) {
    case 53:
    case 76:
        return PictureStatus::FileNotFound;
    case 70:
        return PictureStatus::AccessDenied;
    case 61:
        return PictureStatus::Win32Error;
    default:
        return PictureStatus::GenericError;
    }
}

int statusOfReader(const QImageReader& reader, const QString& file)
{
    switch (reader.error()) {
    case QImageReader::FileNotFoundError: {
        const QFileInfo info(file);
        if (info.exists() && !info.isReadable())
            return PictureStatus::AccessDenied;
        return info.exists() && !info.isFile() ? PictureStatus::GenericError : PictureStatus::FileNotFound;
    }
    case QImageReader::UnsupportedFormatError:
    case QImageReader::InvalidDataError:
        return PictureStatus::UnknownImageFormat;
    case QImageReader::DeviceError:
        return PictureStatus::Win32Error;
    case QImageReader::UnknownError:
        break;
    }
    return PictureStatus::GenericError;
}

cDIBSection readWith(QImageReader& reader, int& status, const QString& file)
{
    reader.setAutoTransform(false);
    QImage image;
    if (!reader.read(&image)) {
        status = statusOfReader(reader, file);
        return {};
    }
    cDIBSection surface = surfaceFromImage(image);
    status = surface.hDib() != 0 ? PictureStatus::Ok : PictureStatus::OutOfMemory;
    return surface;
}

} // namespace

std::string_view statusMessage(int status)
{
    if (status >= 1 && status < static_cast<int>(kStatusMessages.size()))
        return kStatusMessages[static_cast<std::size_t>(status)];
    return "Unknown GDI+ Error.";
}

std::string statusReportText(int status)
{
    return std::string(statusMessage(status)) + " GDI+ Error:" + std::to_string(status);
}

std::string pictureFailureText(int status)
{
    if (status == PictureStatus::Ok)
        return {};
    if (status == PictureStatus::NoEncoder)
        return std::string(kNoEncoderText);
    return statusReportText(status);
}

int reportStatus(int status, const PictureMessage& show)
{
    if (status != PictureStatus::Ok && show)
        show(statusReportText(status), kStatusTitle);
    return status;
}

std::vector<ImageEncoder> installedEncoders()
{
    std::vector<ImageEncoder> encoders;
    const QMimeDatabase mimeTypes;
    for (const QByteArray& format : QImageWriter::supportedImageFormats()) {
        const QMimeType type =
            mimeTypes.mimeTypeForFile(QStringLiteral("x.") + QString::fromLatin1(format), QMimeDatabase::MatchExtension);
        if (type.isValid() && !type.isDefault())
            encoders.push_back({type.name().toStdString(), format.toStdString()});
    }
    return encoders;
}

int PictureSession::startup()
{
    m_encoders = m_table ? m_table() : std::vector<ImageEncoder>{};
    m_ready = !m_encoders.empty();
    return m_ready ? PictureStatus::Ok : PictureStatus::GenericError;
}

void PictureSession::shutdown()
{
    m_encoders.clear();
    m_ready = false;
}

std::optional<std::string> PictureSession::encoderFor(std::string_view mimeType) const
{
    for (const auto& encoder : m_encoders)
        if (equalsIgnoringCase(encoder.mimeType, mimeType))
            return encoder.format;
    return std::nullopt;
}

cDIBSection surfaceFromImage(const QImage& image)
{
    cDIBSection surface;
    if (image.isNull() || !surface.Create(image.width(), image.height()))
        return surface;
    const QImage bgr = image.convertToFormat(QImage::Format_BGR888);
    if (bgr.isNull()) {
        surface.ClearUp();
        return surface;
    }
    const auto rowBytes = static_cast<std::size_t>(surface.Width()) * 3;
    for (int y = 0; y < surface.Height(); ++y)
        std::memcpy(surface.scanLine(y), bgr.constScanLine(y), rowBytes);
    return surface;
}

QImage imageFromSurface(const cDIBSection& surface)
{
    if (surface.hDib() == 0)
        return {};
    QImage image(surface.Width(), surface.Height(), QImage::Format_BGR888);
    if (image.isNull())
        return image;
    const auto rowBytes = static_cast<std::size_t>(surface.Width()) * 3;
    for (int y = 0; y < surface.Height(); ++y)
        std::memcpy(image.scanLine(y), surface.scanLine(y), rowBytes);
    return image;
}

cDIBSection readPictureFile(const std::filesystem::path& path, int& status)
{
    const QString file = QString::fromStdString(path.string());
    QImageReader reader(file);
    return readWith(reader, status, file);
}

cDIBSection readPictureBytes(std::string_view bytes, int& status)
{
    QByteArray data(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return readWith(reader, status, {});
}

cDIBSection loadPicturePlus(const std::filesystem::path& path, const PictureMessage& show)
{
    int status = PictureStatus::Ok;
    cDIBSection picture = readPictureFile(path, status);
    reportStatus(status, show);
    return picture;
}

bool encodePicture(const cDIBSection& surface, const std::string& encoder, PictureFormat format, int quality,
                   std::string& bytes, int& status)
{
    const QImage image = imageFromSurface(surface);
    if (image.isNull()) {
        status = PictureStatus::InvalidParameter;
        return false;
    }
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, QByteArray::fromStdString(encoder));
    if (format == PictureFormat::Jpeg)
        writer.setQuality(std::clamp(quality, 0, 100));
    if (!writer.write(image)) {
        status = writer.error() == QImageWriter::InvalidImageError ? PictureStatus::InvalidParameter
                 : writer.error() == QImageWriter::DeviceError     ? PictureStatus::Win32Error
                                                                   : PictureStatus::GenericError;
        return false;
    }
    bytes.assign(data.constData(), static_cast<std::size_t>(data.size()));
    status = PictureStatus::Ok;
    return true;
}

int savePicture(const PictureSession& session, const cDIBSection& surface, const std::filesystem::path& path,
                PictureFormat format, int quality, const PictureMessage& show)
{
    // A picture without a bitmap cannot become an encoder's image.
    if (surface.hDib() == 0)
        return reportStatus(PictureStatus::InvalidParameter, show);
    const auto encoder = session.encoderFor(mimeTypeOf(format));
    if (!encoder) {
        if (show)
            show(kNoEncoderText, kNoEncoderTitle);
        return PictureStatus::NoEncoder;
    }
    std::string bytes;
    int status = PictureStatus::Ok;
    if (!encodePicture(surface, *encoder, format, quality, bytes, status))
        return reportStatus(status, show);
    try {
        writeFileAtomically(path, bytes);
    } catch (const RunError& error) {
        return reportStatus(statusOfWriteError(error), show);
    }
    return PictureStatus::Ok;
}

int savePictureFile(const cDIBSection& surface, const std::filesystem::path& path, PictureFormat format, int quality)
{
    PictureSession session;
    if (const int status = session.startup(); status != PictureStatus::Ok)
        return status;
    return savePicture(session, surface, path, format, quality, {});
}

} // namespace zw
