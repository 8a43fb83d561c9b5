#pragma once

class QObject;

// One object per group of tests; main() runs them in turn.
QObject* createCommonTests();
QObject* createModuleBaseTests();
QObject* createWorkerTests();
QObject* createClientSdkTests();
QObject* createDataTests();
