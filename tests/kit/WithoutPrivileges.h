#pragma once

namespace tests {

/// While it lives, the calling thread is bound by the permissions of files even where the tests run as root.
class WithoutPrivileges
{
public:
    WithoutPrivileges();
    ~WithoutPrivileges();
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

private:
    unsigned m_effective[2] = {};
};

} // namespace tests
