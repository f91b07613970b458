#pragma once

#include <QStringList>

/// The parts that are not empty, side by side as the language in force lists them: "Exchange, Singapore".
QString listed(QStringList parts);
