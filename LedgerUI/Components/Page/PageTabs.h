#pragma once

#include <map>
#include <vector>

#include <QFrame>
#include <QString>

class QStackedWidget;
class QTabBar;

/// The tabs of a page, each with its contents below them. Which are shown may change at any time; the chosen one stays
/// while it is there. Ctrl+Tab goes to the next, Ctrl+Shift+Tab to the one before.
class PageTabs final : public QFrame {
    Q_OBJECT
public:
    struct Tab {
        QString id;
        QString text;
        int count = 0; // shown beside the text where there are any
    };

    /// `row` is the name of the row of tabs, by which tests find it.
    explicit PageTabs(const QString& row, QWidget* parent = nullptr);

    /// What stands below the tab of this id, made as a child of `place()`.
    void setContents(const QString& id, QWidget* contents);
    [[nodiscard]] QWidget* place() const;
    void present(const std::vector<Tab>& tabs);
    /// What the tabs are about, for readers.
    void setName(const QString& name);

    void choose(const QString& id);
    [[nodiscard]] QString chosen() const;
    [[nodiscard]] QTabBar& row() const { return *m_row; }

Q_SIGNALS:
    void chosenChanged(const QString& id);

private:
    void step(int by);
    void follow();
    void presentCount(int at, int count);

    QTabBar* m_row = nullptr;
    QStackedWidget* m_stack = nullptr;
    std::map<QString, QWidget*> m_contents;
    QString m_announced;
};
