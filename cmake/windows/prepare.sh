#!/usr/bin/env bash
#
# Builds for Windows what the library and its tests need: prepare.sh
#
# ICU, fmt and rapidcheck are built from the distribution's source packages, GoogleTest from the
# sources that its package installs; Boost, CLI11 and RapidJSON are headers. All of it comes to lie
# in build/windows-packages/prefix, and each is built anew only if the way in which that is done
# changes. The machine's own package lists stay as they are.

set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
work=$(readlink -f -- "$here/../..")/build/windows-packages
readonly here work

readonly COMPILER=x86_64-w64-mingw32-g++-posix

say()
{
    printf 'windows: %s\n' "$*" >&2
}

# quietly LOG COMMAND...: runs it with its output in the log, which is shown if it fails.
quietly()
{
    local log=$work/$1
    shift
    "$@" </dev/null >"$log" 2>&1 && return
    tail -n 40 "$log" >&2
    say "failed: $* (the output is in $log)"
    exit 1
}

# --- sources ---------------------------------------------------------------------------------

# Lists of source packages beside the machine's own: use_lists [RELEASE]. Without a
# release it is the machine's.
use_lists()
{
    local apt=$work/apt file
    rm -rf "$apt/parts"
    mkdir -p "$apt/parts" "$apt/lists/partial" "$apt/cache/archives/partial"
    cat >"$apt/apt.conf" <<END
Dir::Etc::sourcelist "/dev/null";
Dir::Etc::sourceparts "$apt/parts";
Dir::State::lists "$apt/lists";
Dir::Cache "$apt/cache";
APT::Sandbox::User "";
END
    for file in /etc/apt/sources.list.d/*.sources; do
        [[ -f $file ]] || continue
        sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt/parts/${file##*/}"
        if (($# != 0)); then
            sed -i "s/^Suites:.*-security.*/Suites: $1-security/; t; s/^Suites:.*/Suites: $1/" \
                "$apt/parts/${file##*/}"
        fi
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ -f $file ]] || continue
        sed -n 's/^deb /deb-src /p' "$file" >"$apt/parts/${file##*/}"
        [[ $file == *.list ]] || mv "$apt/parts/${file##*/}" "$apt/parts/machine.list"
    done
    APT_CONFIG=$apt/apt.conf apt-get -q update </dev/null
}

# fetch PACKAGE...: the upstream archive of each into the work folder, if the lists have it.
fetch()
{
    (cd "$work/sources" \
        && APT_CONFIG=$work/apt/apt.conf apt-get -q source --download-only --tar-only "$@" \
            </dev/null)
}

# unpack NAME: sources/NAME_*.orig.tar.* into sources/NAME.
unpack()
{
    local archive
    archive=$(compgen -G "$work/sources/$1_*.orig.tar.?z" | head -n 1)
    rm -rf "${work:?}/sources/$1"
    mkdir -p "$work/sources/$1"
    tar -xf "$archive" -C "$work/sources/$1"
}

# folder_with NAME FILE: the folder in sources/NAME that holds this file.
folder_with()
{
    local found
    found=$(find "$work/sources/$1" -path "*/$2" -print -quit)
    printf '%s\n' "${found%"/$2"}"
}

# Fetches and unpacks those of the source packages that are not there.
fetch_sources()
{
    local name missing=()
    for name in "$@"; do
        [[ -d $work/sources/$name ]] || missing+=("$name")
    done
    ((${#missing[@]} > 0)) || return 0
    say "fetching sources: ${missing[*]}"
    mkdir -p "$work/sources"
    quietly lists.log use_lists
    for name in "${missing[@]}"; do
        # Not every mirror keeps all sources of its release.
        if ! fetch "$name" >"$work/fetch-$name.log" 2>&1; then
            quietly lists.log use_lists trixie
            quietly "fetch-$name.log" fetch "$name"
        fi
        unpack "$name"
    done
}

# --- building --------------------------------------------------------------------------------

# build NAME SOURCE ARGUMENT...: a CMake project, installed into the prefix.
build()
{
    local name=$1 source=$2 stamp
    stamp="$work $("$COMPILER" -dumpfullversion) $* \
$(cat "$here/toolchain.cmake" "$source/CMakeLists.txt" "$here"/icu/* | cksum)"
    [[ -f $work/$name/.done && $(<"$work/$name/.done") == "$stamp" ]] && return
    shift 2
    say "building $name for Windows"
    rm -rf "${work:?}/$name"
    quietly "$name-configure.log" cmake -S "$source" -B "$work/$name" -G Ninja \
        "-DCMAKE_TOOLCHAIN_FILE=$here/toolchain.cmake" "-DCMAKE_INSTALL_PREFIX=$work/prefix" \
        -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O1" "$@"
    quietly "$name-build.log" cmake --build "$work/$name"
    quietly "$name-install.log" cmake --install "$work/$name"
    printf '%s\n' "$stamp" >"$work/$name/.done"
}

# What is there already: headers that are the same everywhere, and the compiler's runtimes.
link_what_is_there()
{
    local folder library
    mkdir -p "$work/prefix/include" "$work/prefix/bin"
    for library in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
        ln -sf "$(readlink -f -- "$("$COMPILER" -print-file-name="$library")")" "$work/prefix/bin/"
    done
    for folder in boost CLI rapidjson; do
        ln -sfn "/usr/include/$folder" "$work/prefix/include/$folder"
    done
}

main()
{
    mkdir -p "$work"
    fetch_sources icu rapidcheck fmtlib
    link_what_is_there
    build icu "$here/icu" "-DICU_SOURCE=$(folder_with icu common/unicode/utypes.h)"
    build fmt "$(folder_with fmtlib include/fmt/core.h)" -DFMT_TEST=OFF -DFMT_DOC=OFF
    build rapidcheck "$(folder_with rapidcheck include/rapidcheck.h)" -DRC_ENABLE_GTEST=ON
    build googletest /usr/src/googletest
}

main "$@"
