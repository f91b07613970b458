#pragma once

#include <QWidget>

class QPushButton;

/// A numbered thing to do, with the button that does it. The first of several stands out.
class SetupStep final : public QWidget {
    Q_OBJECT
public:
    SetupStep(int number, const QString& title, const QString& sentence, QPushButton* button, QWidget* parent);
};
