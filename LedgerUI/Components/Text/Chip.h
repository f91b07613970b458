#pragma once

#include <QLabel>

/// A short word on a ground of its own: a state ("Reversed"), a count.
class Chip final : public QLabel {
    Q_OBJECT
public:
    enum class Kind { neutral, accent, warn };

    explicit Chip(Kind kind = Kind::neutral, QWidget* parent = nullptr);
};
