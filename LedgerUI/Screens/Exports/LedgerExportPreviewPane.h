#pragma once

#include <array>

#include <QScrollArea>

#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

class FieldError;
class TextLabel;

/// What the file will hold and what it will be called; it scrolls where the window is too low for it.
class LedgerExportPreviewPane final : public QScrollArea {
    Q_OBJECT
public:
    explicit LedgerExportPreviewPane(QWidget* parent = nullptr);

    /// Counts that are being worked out anew stay, in a quieter colour. Nothing before the first.
    void present(const std::optional<LedgerExportPreview>& counts, bool isCounting, const QString& fileName);

    /// The height in which nothing has to be scrolled.
    [[nodiscard]] QSize sizeHint() const override;

private:
    struct Figure {
        TextLabel* name = nullptr;
        TextLabel* count = nullptr;
    };

    TextLabel* m_title = nullptr;
    std::array<Figure, 4> m_figures;
    TextLabel* m_rows = nullptr;
    TextLabel* m_fileLabel = nullptr;
    TextLabel* m_file = nullptr;
    TextLabel* m_recheck = nullptr;
};
