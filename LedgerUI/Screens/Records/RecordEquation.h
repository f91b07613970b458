#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/Records/RecordFigure.h"

/// Figures that add up, side by side; where they do not fit they go on in a second row.
class RecordEquation final : public QFrame {
    Q_OBJECT
public:
    explicit RecordEquation(QWidget* parent = nullptr);

    void present(const std::vector<RecordFigure>& figures);

private:
    std::vector<RecordFigure> m_figures;
};
