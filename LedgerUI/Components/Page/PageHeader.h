#pragma once

#include <vector>

#include <QFrame>

class QAction;
class QHBoxLayout;
class QToolButton;
class TextLabel;

/// The top strip of a page: title, something in the middle, quiet actions that fold to their glyphs in a narrow window,
/// and the page's main button.
class PageHeader final : public QFrame {
    Q_OBJECT
public:
    explicit PageHeader(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    /// Beside the title: a period, a search.
    void setMiddle(QWidget* widget);
    void addSecondary(QAction* action);
    void setPrimary(QWidget* button);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void adapt();
    void foldOrUnfold();

    TextLabel* m_title = nullptr;
    QHBoxLayout* m_layout = nullptr;
    std::vector<QToolButton*> m_secondary;
    QWidget* m_primary = nullptr; // at the right of all others
};
