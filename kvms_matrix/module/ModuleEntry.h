#pragma once

#if defined(_WIN32)
#define KVMS_MODULE_API __declspec(dllexport)
#else
#define KVMS_MODULE_API __attribute__((visibility("default")))
#endif

class ModuleInitialization;

// What the host resolves after loading the plug-in: the module's entry object, the same one on
// every call. The host calls moduleInit() on it once and asks it for the module's page.
extern "C" KVMS_MODULE_API ModuleInitialization* kvms_module_entry();
