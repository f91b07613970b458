#pragma once

#include <QColor>
#include <QObject>

#include "LedgerUI/Theme/ThemeColor.h"

/// The look in force: colours, palette and style sheet of the whole application. Lives as long as the QApplication.
class Theme final : public QObject {
    Q_OBJECT
public:
    static Theme& current();

    [[nodiscard]] ColorScheme scheme() const { return m_scheme; }
    [[nodiscard]] QColor color(const ThemeColor& color) const { return QColor::fromRgb(color.in(m_scheme)); }

    /// Dresses the application in `scheme`: style, palette, font and style sheet.
    void install(ColorScheme scheme);

    /// Dresses the application in the desktop's scheme and follows it from then on.
    void followDesktop();

    /// The style sheet of a scheme, with every name replaced by its colour, size or image.
    static QString styleSheet(ColorScheme scheme);

Q_SIGNALS:
    /// Everything that paints with `color` repaints.
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit Theme(QObject* parent);
    void adoptPaletteOfDesktop();

    ColorScheme m_scheme = ColorScheme::light;
    bool m_isInstalled = false;
    bool m_isInstalling = false;
    bool m_portalAnswers = false;
};
