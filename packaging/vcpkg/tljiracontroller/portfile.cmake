# From this checkout: vcpkg install tljiracontroller --overlay-ports=packaging/vcpkg
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

# The client is one for the whole process, so both libraries are shared ones.
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)

vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DTL_BUILD_TESTS=OFF
        -DTL_BUILD_STANDIN=OFF
        -DTL_BUILD_HOST=OFF
        -DTL_KEYRING=OFF
        -DCMAKE_INSTALL_LIBDIR=lib)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME TLJiraController CONFIG_PATH lib/cmake/TLJiraController)
vcpkg_fixup_pkgconfig()
vcpkg_copy_tools(TOOL_NAMES tljira AUTO_CLEAN)

# What is the same in both builds, and the pages, which stand in the checkout.
file(REMOVE_RECURSE
    "${CURRENT_PACKAGES_DIR}/debug/include"
    "${CURRENT_PACKAGES_DIR}/debug/share"
    "${CURRENT_PACKAGES_DIR}/share/doc"
    "${CURRENT_PACKAGES_DIR}/share/man")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSES/MIT.txt")
