#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tessarine
{

/// Sets an environment variable until the end of its scope, or removes it when no value is given; then it has its old
/// value again, or none. For one thread alone, as the environment is the process's. Windows has no empty variables.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const std::optional<std::string>& value) : name_(name)
    {
        if (const char* before = std::getenv(name))
            before_ = before;
        Put(value);
    }
    ~ScopedEnvironment() { Put(before_); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void Put(const std::optional<std::string>& value) const
    {
#ifdef _WIN32
        _putenv_s(name_.c_str(), value ? value->c_str() : "");
#else
        value ? setenv(name_.c_str(), value->c_str(), 1) : unsetenv(name_.c_str());
#endif
    }

    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace tessarine
