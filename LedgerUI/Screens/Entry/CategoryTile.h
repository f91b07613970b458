#pragma once

#include <string>

#include <QAbstractButton>

#include "LedgerUI/Presentation/Entry/EntryCategories.h"

/// One quick category: its glyph and its name on up to two lines.
class CategoryTile final : public QAbstractButton {
    Q_OBJECT
public:
    explicit CategoryTile(QWidget* parent = nullptr);

    void present(const EntryCategory& category, bool isChosen);
    [[nodiscard]] const std::string& categoryID() const { return m_category.id; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    EntryCategory m_category;
};
