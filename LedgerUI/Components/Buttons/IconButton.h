#pragma once

#include <QToolButton>

#include "LedgerUI/Theme/Token.h"

/// A button that shows only a glyph; its name is read aloud and shown as its tool tip.
class IconButton final : public QToolButton {
    Q_OBJECT
public:
    enum class Frame { none, outlined };

    explicit IconButton(const QString& glyph, Frame frame = Frame::none, QWidget* parent = nullptr);

    void setGlyph(const QString& glyph, Token color = Token::text2);
    void setName(const QString& name);
};
