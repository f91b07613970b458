#pragma once

#include <QString>

/// Texts that people copy from a page or a mail, which brings along what nobody sees.
namespace CopiedText {

/// Without blanks around it, and without control and format characters anywhere in it.
QString visible(QString typed);
/// A code, which holds no blanks but is often written with them.
QString code(const QString& typed);

}
