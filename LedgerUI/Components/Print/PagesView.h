#pragma once

#include <memory>

#include <QAbstractScrollArea>

#include "LedgerUI/Presentation/Print/PrintedPages.h"

/// Pages one below the other, as wide as there is room. Paper stays white in a dark window. The keys turn the pages.
class PagesView final : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit PagesView(QWidget* parent = nullptr);

    void present(std::shared_ptr<const PrintedPages> pages);
    /// The page that takes the most of the view, from 1 on; 0 while there is none.
    [[nodiscard]] int pageShown() const;
    void turnTo(int page);
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void pageChanged(int page);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    [[nodiscard]] double scale() const;
    [[nodiscard]] double pitch() const; // from the top of a page to that of the next
    void layOut();
    void noteShown();

    std::shared_ptr<const PrintedPages> m_pages;
    int m_shown = 0;
};
