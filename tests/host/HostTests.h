#pragma once

class QObject;

// One object per group of tests of the host stand-ins the module uses; main() runs them in turn.
QObject* createCommonTests();
QObject* createModuleBaseTests();
QObject* createWorkerTests();
QObject* createClientSdkTests();
