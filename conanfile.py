"""The recipe for Conan 2, from this checkout: conan create . --build=missing"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class TLJiraController(ConanFile):
    name = "tljiracontroller"
    description = "Attach documents to Jira issues from a desktop application"
    license = "MIT"
    topics = ("jira", "qt", "desktop")
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"
    # What is installed comes of these; the tests stay where they are.
    exports_sources = (
        "CMakeLists.txt", "LICENSE", "LICENSES/*", "README.md", "cli/*", "client/*", "cmake/*", "constants/*", "docs/*", "download/*",
        "framework/*", "platform/*", "records/*", "shell/*", "translations/*", "upload/*",
    )
    # Qt's tools are where its interface files are loaded from.
    default_options = {"qt/*:shared": True, "qt/*:qttools": True, "qt/*:widgets": True, "qt/*:gui": True}

    def set_version(self):
        project = load(self, os.path.join(self.recipe_folder, "CMakeLists.txt"))
        self.version = re.search(r"^project\(.* VERSION ([0-9.]+)", project, re.MULTILINE).group(1)

    def layout(self):
        cmake_layout(self)

    def requirements(self):
        # Their types are in the public headers.
        self.requires("qt/[>=6.4 <7]", transitive_headers=True, transitive_libs=True)
        self.requires("libcurl/[>=7.87 <9]")
        self.requires("icu/[>=70]")
        self.requires("zlib/[>=1.2.11 <2]")

    def validate(self):
        check_min_cppstd(self, 20)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        for part in ("TESTS", "STANDIN", "HOST"):
            toolchain.cache_variables[f"TL_BUILD_{part}"] = False
        # What is found by chance is no part of a package.
        toolchain.cache_variables["TL_KEYRING"] = "OFF"
        # Wherever it is built: Debian's own folder is for Debian's packages.
        toolchain.cache_variables["CMAKE_INSTALL_LIBDIR"] = "lib"
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "MIT.txt", os.path.join(self.source_folder, "LICENSES"), os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        # The package of CMake that is installed says more than one that Conan would write.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/TLJiraController"]
        self.cpp_info.libs = ["TLJiraController", "TLJiraControllerClient"]
