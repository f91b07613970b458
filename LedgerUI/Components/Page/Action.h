#pragma once

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>

#include "LedgerUI/Theme/ThemeColor.h"

class QAction;
class QMenu;
class QWidget;
enum class Command;

/// One thing that a person can do on a page, said once: header, menus and keys are all made of it.
struct Action {
    QString id; // its object name
    QString text;
    QString glyph = {};
    ThemeColor ink = Token::text2;
    QList<QKeySequence> keys = {};
    QString hint = {};             // what the name does not say; stands below it in the tool tip
    QString whyNot = {};           // in words, while it cannot be done; empty when it can
    bool isOffered = true;         // else it is nowhere to be seen
    std::optional<bool> isOn = {}; // for one of several that exclude each other, or for a switch
    std::function<void()> run = {};
};

/// What stands on no menu, and has keys only.
Action keyedAction(const char* id, Command command, std::function<void()> run);

/// The actions of a page. They are presented anew whenever something that they say has changed; the keys hold anywhere
/// in the window while the page is shown.
class ActionSet final : public QObject {
    Q_OBJECT
public:
    explicit ActionSet(QWidget* page);

    /// Makes what exists say what `actions` say, and adds those that are new. Others stay as they are.
    void present(std::vector<Action> actions);
    /// One that has been presented.
    [[nodiscard]] QAction* operator[](const QString& id) const;
    /// Adds those that are offered, in this order; an empty id stands for a line between groups.
    void fill(QMenu& menu, const QList<QString>& ids) const;

private:
    struct Known {
        QAction* shown = nullptr;
        QString glyph; // its icon, in this colour
        ThemeColor ink = Token::text2;
        std::function<void()> run;
    };
    Known& known(const QString& id);

    QWidget* m_page;
    std::map<QString, Known> m_known;
};

/// "New entry (Ctrl+N)": the name with the first of its keys.
QString namedWithKeys(const QString& name, const QList<QKeySequence>& keys);
