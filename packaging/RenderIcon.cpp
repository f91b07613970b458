#include <array>
#include <cstdio>

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

/// Draws the program's mark in every size that desktops ask for: render-icon MARK.svg FOLDER.
int main(int argumentCount, char** arguments)
{
    constexpr std::array sizes{16, 22, 24, 32, 48, 64, 128, 256, 512};
    if (argumentCount != 3)
        return 2;
    QSvgRenderer mark{QString::fromLocal8Bit(arguments[1])};
    const QString folder = QString::fromLocal8Bit(arguments[2]);
    if (!mark.isValid() || !QDir{}.mkpath(folder))
        return 1;
    for (const int size : sizes) {
        QImage image{size, size, QImage::Format_ARGB32_Premultiplied};
        image.fill(Qt::transparent);
        QPainter painter{&image};
        mark.render(&painter);
        painter.end();
        if (!image.save(QStringLiteral("%1/%2.png").arg(folder).arg(size))) {
            std::fprintf(stderr, "cannot write the icon of %d pixels\n", size);
            return 1;
        }
    }
    return 0;
}
