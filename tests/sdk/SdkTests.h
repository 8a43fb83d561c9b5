#pragma once

class QObject;

// One object per group of tests; main() runs them in turn.
QObject* createSessionTests();
QObject* createConnectionLossTests();
QObject* createCallTests();
