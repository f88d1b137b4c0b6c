#!/usr/bin/env python3
"""Runs the recipes of packaging/ against stand-ins: recipes.py ROOT BUILD CMAKE COMPILER

Neither Conan nor vcpkg is asked. What their functions are given is checked, and done as far as it
concerns this tree: what Conan exports is configured, and what vcpkg installs is installed.
"""

import importlib.util
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import types
import unittest

ROOT, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
CMAKE, COMPILER = sys.argv[3:]
sys.path.insert(0, str(ROOT / "tests/structure"))
import versions  # noqa: E402

VERSION = versions.version_of(ROOT)[0]
PORT = ROOT / "packaging/vcpkg/ports/zkflnetwork"
CONAN = ROOT / "packaging/conan"


def run(*command):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False)
    if done.returncode:
        raise AssertionError(f"status {done.returncode}: {command}\n{done.stdout}")
    return done.stdout


class ConanTest(unittest.TestCase):
    calls = []

    @classmethod
    def recipe(cls, path):
        """The class of a recipe, made with a conan that has what recipes use, and nothing else."""

        def copy(_, pattern, src, dst):
            if pattern != "*":
                raise AssertionError(f"the stand-in takes whole folders only, not {pattern}")
            shutil.copytree(src, dst)

        cls.calls = []
        modules = {
            "conan": {"ConanFile": type("ConanFile", (), {"recipe_folder": str(path.parent)})},
            "conan.tools": {},
            "conan.tools.build": {
                "can_run": lambda conanfile: True,
                "check_min_cppstd": lambda conanfile, least: cls.calls.append(("std", least))},
            "conan.tools.cmake": {"CMake": None, "CMakeDeps": None, "CMakeToolchain": None,
                                  "cmake_layout": lambda conanfile: cls.calls.append("layout")},
            "conan.tools.files": {
                "copy": copy,
                "load": lambda conanfile, file: pathlib.Path(file).read_text("utf-8")},
        }
        for name, content in modules.items():
            sys.modules[name] = types.ModuleType(name)
            vars(sys.modules[name]).update(content)
        spec = importlib.util.spec_from_file_location("recipe", path)
        module = importlib.util.module_from_spec(spec)
        spec.loader.exec_module(module)
        return next(kind for kind in vars(module).values()
                    if isinstance(kind, type) and kind.__module__ == "recipe")

    def test_the_version_is_that_of_the_tree(self):
        recipe = self.recipe(CONAN / "conanfile.py")()
        recipe.set_version()
        self.assertEqual((recipe.name, recipe.version), ("zkflnetwork", VERSION))

    def test_it_is_of_cpp20_and_needs_what_cmake_looks_for(self):
        recipe = self.recipe(CONAN / "conanfile.py")()
        required = {}
        recipe.requires = lambda reference, **traits: required.update({reference: traits})
        recipe.requirements()
        recipe.validate()
        self.assertEqual(self.calls, [("std", 20)])
        least = re.search(r"zkflnetwork_find\(Boost::headers Boost (\S+) REQUIRED\)",
                          (ROOT / "cmake/ZkflnetworkDependencies.cmake").read_text("utf-8"))[1]
        self.assertEqual(required, {f"boost/[>={least} <2]": {"transitive_headers": True},
                                    "icu/[>=67]": {}})

    def test_what_it_exports_can_be_configured(self):
        recipe = self.recipe(CONAN / "conanfile.py")()
        with tempfile.TemporaryDirectory() as folder:
            recipe.export_sources_folder = folder + "/sources"
            pathlib.Path(recipe.export_sources_folder).mkdir()
            recipe.export_sources()
            run(CMAKE, "-S", folder + "/sources", "-B", folder + "/build", "-G", "Ninja",
                f"-DCMAKE_CXX_COMPILER={COMPILER}", "-DBUILD_TESTING=OFF")
            # The install rules name files that are only looked for when they are needed.
            for name in re.findall(r"\$\{PROJECT_SOURCE_DIR\}/([\w./-]+)",
                                   (ROOT / "cmake/ZkflnetworkInstall.cmake").read_text("utf-8")):
                self.assertTrue((pathlib.Path(folder) / "sources" / name).exists(), name)

    def test_what_tries_the_package_is_a_recipe(self):
        recipe = self.recipe(CONAN / "test_package/conanfile.py")()
        recipe.tested_reference_str = "zkflnetwork/1"
        required = []
        recipe.requires = required.append
        recipe.requirements()
        self.assertEqual(required, ["zkflnetwork/1"])


# What vcpkg's functions do of which this tree sees something. They take their arguments by keyword.
STAND_INS = """
function(vcpkg_check_linkage kind)
    message("linkage ${kind}")
endfunction()
function(vcpkg_check_features)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "OUT_FEATURE_OPTIONS" "FEATURES")
    list(LENGTH arg_FEATURES count)
    math(EXPR last "${count} - 1")
    set(options "")
    foreach(i RANGE 0 ${last} 2)
        math(EXPR next "${i} + 1")
        list(GET arg_FEATURES ${i} feature)
        list(GET arg_FEATURES ${next} option)
        if(feature IN_LIST FEATURES)
            list(APPEND options "-D${option}=ON")
        else()
            list(APPEND options "-D${option}=OFF")
        endif()
    endforeach()
    set(${arg_OUT_FEATURE_OPTIONS} "${options}" PARENT_SCOPE)
endfunction()
function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
    execute_process(COMMAND "${CMAKE_COMMAND}" -S "${arg_SOURCE_PATH}" -B "${WORK}/configured"
        -G Ninja -DCMAKE_CXX_COMPILER=${COMPILER} ${arg_OPTIONS} COMMAND_ERROR_IS_FATAL ANY)
    message("options ${arg_OPTIONS}")
endfunction()
function(vcpkg_cmake_install)
    execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix
        "${CURRENT_PACKAGES_DIR}" COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()
function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "CONFIG_PATH" "")
    if(NOT EXISTS "${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH}/zkflnetworkConfig.cmake")
        message(FATAL_ERROR "no zkflnetworkConfig.cmake in ${arg_CONFIG_PATH}")
    endif()
endfunction()
function(vcpkg_fixup_pkgconfig)
    if(NOT EXISTS "${CURRENT_PACKAGES_DIR}/lib/pkgconfig/zkflnetwork.pc")
        message(FATAL_ERROR "no zkflnetwork.pc")
    endif()
endfunction()
function(vcpkg_copy_tools)
    cmake_parse_arguments(PARSE_ARGV 0 arg "AUTO_CLEAN" "" "TOOL_NAMES")
    foreach(tool IN LISTS arg_TOOL_NAMES)
        if(NOT EXISTS "${CURRENT_PACKAGES_DIR}/bin/${tool}")
            message(FATAL_ERROR "no ${tool}")
        endif()
    endforeach()
    message("tools ${arg_TOOL_NAMES}")
endfunction()
function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
    foreach(file IN LISTS arg_FILE_LIST)
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "no ${file}")
        endif()
    endforeach()
endfunction()
"""


class VcpkgTest(unittest.TestCase):
    def run_port(self, *features):
        with tempfile.TemporaryDirectory() as folder:
            script = pathlib.Path(folder) / "run.cmake"
            script.write_text("cmake_minimum_required(VERSION 3.22)\n" + STAND_INS
                              + f'include("{PORT}/portfile.cmake")\n', encoding="utf-8")
            words = run(CMAKE, f"-DWORK={folder}", f"-DBUILD={BUILD}", f"-DCOMPILER={COMPILER}",
                        f"-DCURRENT_PORT_DIR={PORT}", f"-DCURRENT_PACKAGES_DIR={folder}/package",
                        "-DPORT=zkflnetwork", f"-DFEATURES={';'.join(features)}", "-P", script)
            # CMAKE_CURRENT_LIST_DIR, where the port has its files, is the port's own.
            self.assertTrue((pathlib.Path(folder) / "package/share/zkflnetwork/usage").exists())
        return words

    def test_the_port_builds_this_tree(self):
        words = self.run_port()
        self.assertIn("linkage ONLY_DYNAMIC_LIBRARY", words)
        self.assertIn("options -DBUILD_TESTING=OFF;-DZKFLNETWORK_BUILD_TOOL=OFF", words)
        self.assertNotIn("tools", words)

    def test_the_tool_is_a_feature(self):
        words = self.run_port("tool")
        self.assertIn("options -DBUILD_TESTING=OFF;-DZKFLNETWORK_BUILD_TOOL=ON", words)
        self.assertIn("tools iri", words)

    def test_what_it_depends_on_is_what_is_included(self):
        manifest = json.loads((PORT / "vcpkg.json").read_text("utf-8"))
        named = {name for name in manifest["dependencies"] if isinstance(name, str)}
        included = {"icu"}
        for path in [*(ROOT / "include").rglob("*"), *(ROOT / "src").rglob("*")]:
            if path.suffix in (".hpp", ".cpp", ".ipp"):
                included |= {"boost-" + name.replace("_", "-") for name in re.findall(
                    r"^#include <boost/([a-z_]+)", path.read_text("utf-8"), re.MULTILINE)}
        self.assertEqual(named, included)
        self.assertEqual(set(manifest["features"]), {"tool"})
        self.assertEqual(manifest["version"], VERSION)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
