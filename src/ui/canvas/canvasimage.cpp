#include "canvasimage.h"

#include "fileops.h"

#include <QBuffer>
#include <QImageReader>
#include <QUrl>

namespace CanvasImage {

Picture read(const QString &path)
{
    QByteArray bytes;
    if (path.isEmpty() || !FileOps::readAll(path, &bytes, FileOps::ReadLinks::NoFollow))
        return {};
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    Picture picture;
    picture.size = reader.size();
    if (picture.size.width() > shownSide || picture.size.height() > shownSide)
        reader.setScaledSize(picture.size.scaled(shownSide, shownSide, Qt::KeepAspectRatio));
    picture.image = reader.read();
    if (picture.image.isNull())
        return {};
    if (!picture.size.isValid())
        picture.size = picture.image.size();
    return picture;
}

QString linkHost(const QString &link)
{
    const QString text = link.trimmed();
    if (text.isEmpty())
        return QString();
    const QString host = QUrl(text).host();
    return host.isEmpty() ? QUrl::fromUserInput(text).host() : host;
}

} // namespace CanvasImage
