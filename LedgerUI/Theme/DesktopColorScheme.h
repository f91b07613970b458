#pragma once

#include <optional>

#include <QObject>

#include "LedgerUI/Theme/Token.h"

class QDBusPendingCallWatcher;
class QDBusVariant;

/// Asks the desktop portal whether light or dark is preferred, and listens for changes. Never blocks.
class DesktopColorScheme final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void watch();

Q_SIGNALS:
    /// The desktop's wish; nothing when it states none.
    void reported(std::optional<ColorScheme> scheme);

private:
    void readAnswer(QDBusPendingCallWatcher* call);

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};
