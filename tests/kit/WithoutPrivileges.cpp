#include "tests/kit/WithoutPrivileges.h"

#include <gtest/gtest.h>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tests {

namespace {

__user_cap_header_struct thisThread()
{
    return {_LINUX_CAPABILITY_VERSION_3, 0};
}

} // namespace

WithoutPrivileges::WithoutPrivileges()
{
    __user_cap_header_struct header = thisThread();
    __user_cap_data_struct data[2] = {};
    EXPECT_EQ(syscall(SYS_capget, &header, data), 0);
    for (int word = 0; word < 2; ++word) {
        m_effective[word] = data[word].effective;
        data[word].effective = 0;
    }
    EXPECT_EQ(syscall(SYS_capset, &header, data), 0);
}

WithoutPrivileges::~WithoutPrivileges()
{
    __user_cap_header_struct header = thisThread();
    __user_cap_data_struct data[2] = {};
    EXPECT_EQ(syscall(SYS_capget, &header, data), 0);
    for (int word = 0; word < 2; ++word)
        data[word].effective = m_effective[word];
    EXPECT_EQ(syscall(SYS_capset, &header, data), 0);
}

} // namespace tests
