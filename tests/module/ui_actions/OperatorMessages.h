#pragma once

#include <QStringList>

// What the module tells the operator (its message boxes), collected instead of shown.
class OperatorMessages {
public:
    // Routes the module's messages here; call before the page or canvas under test exists.
    static void collect();
    // Messages given since the last clear, oldest first.
    static QStringList all();
    static void clear();
};
