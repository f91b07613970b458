#include "LedgerUI/Theme/Theme.h"

#include <utility>

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

#include "LedgerUI/Theme/DesktopColorScheme.h"
#include "LedgerUI/Theme/ThemePalette.h"
#include "LedgerUI/Theme/TypeScale.h"

// The library is static: nothing else refers to its resources. The macro declares names of the global namespace.
static void registerResources()
{
    Q_INIT_RESOURCE(theme);
    Q_INIT_RESOURCE(tinted);
    Q_INIT_RESOURCE(icons);
}

namespace {

constexpr int middleLightness = 128;

ColorScheme schemeOf(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < middleLightness ? ColorScheme::dark : ColorScheme::light;
}

}

Theme::Theme(QObject* parent) : QObject{parent}
{
    registerResources();
}

Theme& Theme::current()
{
    static QPointer<Theme> theme;
    if (!theme)
        theme = new Theme(qApp);
    return *theme;
}

void Theme::install(ColorScheme scheme)
{
    const QScopedValueRollback installing{m_isInstalling, true};
    if (!std::exchange(m_isInstalled, true))
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    m_scheme = scheme;
    QApplication::setPalette(ThemePalette::of(scheme));
    QApplication::setFont(TypeScale::font(TypeStep::body));
    qApp->setStyleSheet(styleSheet(scheme));
    Q_EMIT changed();
}

void Theme::followDesktop()
{
    install(schemeOf(QGuiApplication::palette()));
    qApp->installEventFilter(this);
    auto* desktop = new DesktopColorScheme(this);
    connect(desktop, &DesktopColorScheme::reported, this, [this](std::optional<ColorScheme> scheme) {
        m_portalAnswers = scheme.has_value();
        if (!scheme)
            adoptPaletteOfDesktop();
        else if (*scheme != m_scheme)
            install(*scheme);
    });
    // The first frame does not wait for the session bus.
    QTimer::singleShot(0, desktop, &DesktopColorScheme::watch);
}

bool Theme::eventFilter(QObject* watched, QEvent* event)
{
    const bool desktopChanged =
        event->type() == QEvent::ThemeChange || (event->type() == QEvent::ApplicationPaletteChange && watched == qApp);
    if (desktopChanged && !m_isInstalling && !m_portalAnswers)
        adoptPaletteOfDesktop();
    return QObject::eventFilter(watched, event);
}

void Theme::adoptPaletteOfDesktop()
{
    // Ours hides the desktop's palette: lift it for a look beneath.
    const QScopedValueRollback installing{m_isInstalling, true};
    QApplication::setPalette(QPalette{});
    const auto scheme = schemeOf(QGuiApplication::palette());
    if (scheme != m_scheme)
        install(scheme);
    else
        QApplication::setPalette(ThemePalette::of(m_scheme));
}
