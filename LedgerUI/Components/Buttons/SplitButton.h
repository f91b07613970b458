#pragma once

#include <functional>

#include <QWidget>

class PrimaryButton;
class QAction;
class QMenu;

/// A main action with an arrow that opens a menu of its variants.
class SplitButton : public QWidget {
    Q_OBJECT
public:
    explicit SplitButton(QWidget* parent = nullptr);

    /// Text, enabled state and tool tip of the button follow the action.
    void setAction(QAction* action);
    /// `fill` fills the menu when it is first opened.
    void setMenu(const std::function<void(QMenu& menu)>& fill);
    void setGlyph(const QString& glyph);
    /// What readers call the arrow.
    void setMenuName(const QString& name);

    [[nodiscard]] PrimaryButton& mainButton() const { return *m_main; }
    [[nodiscard]] PrimaryButton& menuButton() const { return *m_arrow; }

private:
    void follow(const QAction* action);

    PrimaryButton* m_main = nullptr;
    PrimaryButton* m_arrow = nullptr;
    QMenu* m_menu = nullptr;
};
