#include "LedgerUI/Theme/Icon.h"

#include <algorithm>

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr auto markPath = ":/tallyfold/mark.svg";

struct Tint {
    ThemeColor color;
    ThemeColor checked;
};

QString pathOf(const QString& name)
{
    return QStringLiteral(":/icons/%1.svg").arg(name);
}

QPixmap render(const QString& name, const QColor& color, QSize devicePixels)
{
    QPixmap pixmap{devicePixels};
    pixmap.fill(Qt::transparent);
    QPainter painter{&pixmap};
    // Where there is more width than the glyph needs, it stands at the left: the rest is the gap to a text.
    const int extent = std::min(devicePixels.width(), devicePixels.height());
    Icon::paint(painter, name, color, QRectF(0, (devicePixels.height() - extent) / 2.0, extent, extent));
    return pixmap;
}

QPixmap cached(const QString& name, const QColor& color, QSize devicePixels)
{
    const auto key = QStringLiteral("glyph/%1/%2/%3")
                         .arg(name, color.name(QColor::HexRgb))
                         .arg(devicePixels.width() * 10'000 + devicePixels.height());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = render(name, color, devicePixels);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

class GlyphEngine final : public QIconEngine {
public:
    GlyphEngine(QString name, Tint tint) : m_name{std::move(name)}, m_tint{tint} {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const auto ratio = painter->device()->devicePixelRatioF();
        auto glyph = cached(m_name, colorFor(mode, state), rect.size() * ratio);
        glyph.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), glyph);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return cached(m_name, colorFor(mode, state), size);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal /*scale*/) override
    {
        return cached(m_name, colorFor(mode, state), size);
    }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override { return size; }
    [[nodiscard]] QString key() const override { return QStringLiteral("glyph"); }
    bool isNull() override { return false; }
    [[nodiscard]] QIconEngine* clone() const override { return new GlyphEngine(*this); }

private:
    [[nodiscard]] QColor colorFor(QIcon::Mode mode, QIcon::State state) const
    {
        const auto& theme = Theme::current();
        if (mode == QIcon::Disabled)
            return theme.color(Token::disabled);
        return theme.color(state == QIcon::On ? m_tint.checked : m_tint.color);
    }

    QString m_name;
    Tint m_tint;
};

}

QIcon Icon::of(const QString& name, const ThemeColor& color, const ThemeColor& checked)
{
    return QIcon{new GlyphEngine(name, {.color = color, .checked = checked})};
}

QIcon Icon::of(const QString& name, const ThemeColor& color)
{
    return of(name, color, color);
}

QPixmap Icon::pixmap(const QString& name, const QColor& color, int extent, qreal devicePixelRatio)
{
    auto glyph = cached(name, color, QSize{extent, extent} * devicePixelRatio);
    glyph.setDevicePixelRatio(devicePixelRatio);
    return glyph;
}

void Icon::paint(QPainter& painter, const QString& name, const QColor& color, const QRectF& place)
{
    QFile file{pathOf(name)};
    if (!file.open(QIODevice::ReadOnly))
        return;
    QSvgRenderer renderer{file.readAll().replace("currentColor", color.name(QColor::HexRgb).toLatin1())};
    renderer.render(&painter, place);
}

QIcon Icon::mark()
{
    return QIcon{QString::fromLatin1(markPath)};
}

void Icon::paintMark(QPainter& painter, const QRectF& place)
{
    QSvgRenderer renderer{QString::fromLatin1(markPath)};
    renderer.render(&painter, place);
}

bool Icon::exists(const QString& name)
{
    return QFile::exists(pathOf(name));
}
