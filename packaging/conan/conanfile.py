"""Conan's recipe of the library, for Conan 2: conan create packaging/conan"""

import os
import re
import shutil

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class ZkflnetworkRecipe(ConanFile):
    name = "zkflnetwork"
    description = "Value classes for network identifiers: IRIs by RFC 3987, addresses, adapters"
    license = "Apache-2.0"
    topics = ("iri", "uri", "rfc3986", "rfc3987", "idn", "ip-address")
    package_type = "shared-library"
    settings = "os", "compiler", "build_type", "arch"

    def set_version(self):
        # Read where the recipe lies in the tree; what is exported carries it in its reference.
        text = load(self, os.path.join(self._tree(), "CMakeLists.txt"))
        self.version = re.search(r"^ +VERSION (\d+\.\d+\.\d+)$", text, re.MULTILINE)[1]

    def export_sources(self):
        for folder in ("cmake", "debuggers", "include", "src"):
            copy(self, "*", src=os.path.join(self._tree(), folder),
                 dst=os.path.join(self.export_sources_folder, folder))
        # Conan's copy would walk through the whole tree, with all that was built in it.
        for file in ("CMakeLists.txt", "LICENSE"):
            shutil.copy(os.path.join(self._tree(), file), self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        check_min_cppstd(self, 20)

    def requirements(self):
        # The public headers show a little of Boost. ICU is the library's own affair.
        self.requires("boost/[>=1.74 <2]", transitive_headers=True)
        self.requires("icu/[>=67]")

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["BUILD_TESTING"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", src=self.source_folder,
             dst=os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        self.cpp_info.libs = ["zkflnetwork"]
        self.cpp_info.requires = ["boost::headers", "icu::icu-uc"]
        self.cpp_info.set_property("cmake_file_name", "zkflnetwork")
        self.cpp_info.set_property("cmake_target_name", "zkflnetwork::zkflnetwork")
        self.cpp_info.set_property("pkg_config_name", "zkflnetwork")

    def _tree(self):
        return os.path.normpath(os.path.join(self.recipe_folder, "..", ".."))
