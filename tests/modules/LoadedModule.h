// A module, loaded as long as this object lives.
#pragma once

#include <cstdlib>
#include <stdexcept>
#include <string>

#include <dlfcn.h>

#include "modules/ModuleInterface.h"

class LoadedModule {
public:
    // name is "alpha" or "beta"; flags are RTLD_LOCAL or RTLD_GLOBAL. Modules of another compiler may be named by the
    // environment variable QV_TEST_MODULES, as scripts/check-modules does.
    explicit LoadedModule(const std::string& name, int flags = RTLD_LOCAL)
        : m_handle(dlopen(PathOf(name).c_str(), RTLD_NOW | flags)) {
        if (m_handle == nullptr) {
            throw std::runtime_error(dlerror());
        }
        using EntryPoint = const modules::Module* (*)();
        m_module = reinterpret_cast<EntryPoint>(dlsym(m_handle, modules::kEntryPoint))();
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule() { dlclose(m_handle); }

    const modules::Module* operator->() const noexcept { return m_module; }

    static std::string PathOf(const std::string& name) {
        const char* folder = std::getenv("QV_TEST_MODULES");
        return std::string(folder != nullptr ? folder : QV_TEST_MODULES) + "/libtest_module_" + name + ".so";
    }

private:
    void* m_handle;
    const modules::Module* m_module;
};
