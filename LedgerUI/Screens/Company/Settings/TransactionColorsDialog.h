#pragma once

#include <map>
#include <string>
#include <vector>

#include <QRgb>

#include "LedgerUI/Components/Dialogs/FormDialog.h"

class GlyphLabel;
class LedgerStore;
class QAbstractButton;
class QButtonGroup;
class TextLabel;
struct LedgerSnapshot;

/// The company's colours side by side, each with the glyph of its kind.
class ColorStrip final : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    void present(const LedgerSnapshot& snapshot);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Part {
        QString glyph;
        QRgb light;
        QRgb dark;
    };
    std::vector<Part> m_parts;
};

/// The company's colour for each kind of entry. A choice is sent at once; what is chosen while one is under way
/// follows it. Deletes itself when it closes; open it with `open()`.
class TransactionColorsDialog final : public FormDialog {
    Q_OBJECT
public:
    TransactionColorsDialog(LedgerStore& store, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Row {
        std::string kind;
        GlyphLabel* glyph = nullptr;
        TextLabel* name = nullptr;
        QButtonGroup* swatches = nullptr;
        TextLabel* chosen = nullptr;
    };

    void buildBody();
    Row buildRow(std::string_view kind, QWidget* body);
    void present();
    void presentRow(const Row& row);
    void choose(const std::string& kind, int at);
    void sendNext();
    [[nodiscard]] std::string chosenFor(const std::string& kind) const;

    LedgerStore& m_store;
    TextLabel* m_for = nullptr;
    TextLabel* m_hint = nullptr;
    std::vector<Row> m_rows;
    std::map<std::string, std::string> m_waiting; // colours by kind that are not sent yet or on their way
    bool m_isSending = false;
};
