#pragma once

#include <vector>

#include <QLayout>

/// Items side by side at their own size, going on in a new row where the width ends.
class WrapLayout final : public QLayout {
public:
    explicit WrapLayout(QWidget* parent, int gap);
    ~WrapLayout() override;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int at) const override;
    QLayoutItem* takeAt(int at) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    enum class Pass { measure, place };
    [[nodiscard]] int run(const QRect& rect, Pass pass) const;

    std::vector<QLayoutItem*> m_items;
    int m_gap;
};
