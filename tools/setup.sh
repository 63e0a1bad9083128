# Brings a Debian machine to the state in which the project builds and runs. Sourced by run and test.
# Every step leaves either its finished result or nothing, so that an interrupted set-up is simply taken up again.

projectRoot=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
buildFolder=$projectRoot/build

# One line per purpose: what it is for, then the packages.
buildPackages='building: cmake ninja-build make python3 g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 googletest
the archiver and the archive library from their sources: dpkg-dev xz-utils libz-mingw-w64-dev'
workstationPackages='running Windows programs, in the fonts that Windows has: wine wine64 fonts-wine locales python3
a display where there is none, and pictures of it: xvfb openbox imagemagick x11-utils'
nativePackages='native tests: g++ clang-format libarchive-dev'
fuzzPackages='fuzzing: clang libclang-rt-dev libarchive-dev'
resultPackages='looking at the results with other tools: 7zip xorriso
a hand at mouse and keyboard: xdotool'
faultPackages='machines that fail: gcc libc6-dev'
packagingPackages='the help documents: weasyprint fonts-liberation
the installer: nsis osslsigncode'
lintPackages='source checks: clang clang-tidy'

Fail() {
    printf '%s: %s\n' "$(basename "$0")" "$1" >&2
    exit 1
}

Say() { printf '== %s\n' "$1"; }

# Runs one command with its output in a log, and ends with the reason on one line if it fails: Logged LOG WHAT COMMAND...
Logged() {
    local log=$1 what=$2
    shift 2
    if ! "$@" >"$log" 2>&1; then
        Fail "$what failed: $(LastReason "$log") (all of it: ${log#"$projectRoot"/})"
    fi
}

LastReason() {
    local line
    line=$(grep -iE 'no space left|not enough free space|temporary failure resolving|could not (resolve|connect)|unable to (fetch|locate)|permission denied' "$1" | head -n 1)
    # A compiler's own words for it: its options and the names of files hold "error" as well.
    [ -n "$line" ] || line=$(grep -E '(^E: |(^|[^-[:alnum:]])([Ff]atal )?[Ee]rror: )' "$1" | head -n 1)
    [ -n "$line" ] || line=$(grep -iE '(^|[^[:alnum:]])(cannot|failed)([^[:alnum:]]|$)' "$1" | head -n 1)
    [ -n "$line" ] || line=$(tail -n 1 "$1")
    case $line in
        *[Nn]'o space left'* | *'not enough free space'* | *"don't have enough free space"*) line="the disk is full: $line" ;;
        *'emporary failure'* | *'ould not resolve'* | *'ould not connect'*) line="no network: $line" ;;
    esac
    printf '%s' "$line"
}

# Needs room for what is about to be written: NeedRoom FOLDER MEGABYTES WHAT
NeedRoom() {
    local freeMegabytes
    freeMegabytes=$(df -Pm "$1" | awk 'NR == 2 { print $4 }')
    [ "$freeMegabytes" -ge "$2" ] || Fail "the disk is full: $3 needs $2 MB in $1, $freeMegabytes MB are free"
}

IsInstalled() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# The prefix with which packages can be installed: empty for root, sudo otherwise.
PrivilegeCommand() {
    if [ "$(id -u)" = 0 ]; then
        return 0
    elif command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
        printf 'sudo'
    else
        return 1
    fi
}

# What apt says that packages take, in megabytes rounded up: "FETCHED INSTALLED".
InstallationSizes() {
    LC_ALL=C apt-get --assume-no install --no-install-recommends "$@" 2>/dev/null | awk '
        function Megabytes(amount, unit) {
            gsub(",", "", amount)
            return amount * (unit == "GB" ? 1000 : unit == "MB" ? 1 : unit == "kB" ? 0.001 : 0.000001)
        }
        /^Need to get / { split($5, units, "/"); fetched = Megabytes($4, units[1]) }
        /^After this operation, .* additional disk space/ { installed = Megabytes($4, $5) }
        END { print int(fetched) + 1, int(installed) + 1 }'
}

# Installs the packages of the given purposes that are missing: InstallPackages "PURPOSES"
InstallPackages() {
    local purposes=$1 missing=() purpose packages package absent privilege
    command -v dpkg-query >/dev/null || Fail 'this needs Debian: there is no dpkg here'
    while IFS=: read -r purpose packages; do
        absent=()
        for package in $packages; do
            IsInstalled "$package" || absent+=("$package")
        done
        if [ ${#absent[@]} -gt 0 ]; then
            Say "missing for $purpose: ${absent[*]}"
            missing+=("${absent[@]}")
        fi
    done <<<"$purposes"
    [ ${#missing[@]} -gt 0 ] || return 0

    privilege=$(PrivilegeCommand) ||
        Fail "no root rights and no sudo; have an administrator run: apt-get install --no-install-recommends ${missing[*]}"
    local apt=($privilege env DEBIAN_FRONTEND=noninteractive apt-get -y -q -o DPkg::Lock::Timeout=120)
    if [ -n "$(dpkg --audit 2>/dev/null)" ]; then
        Say 'finishing an interrupted installation of packages'
        Logged "$buildFolder/logs/dpkg.log" 'finishing the interrupted installation' \
            $privilege env DEBIAN_FRONTEND=noninteractive dpkg --configure -a
    fi
    Say "installing ${#missing[@]} Debian packages"
    # A foreign source that cannot be read is no reason to stop: the installation below tells what counts.
    "${apt[@]}" update >"$buildFolder/logs/apt-update.log" 2>&1 || true
    local sizes
    read -ra sizes <<<"$(InstallationSizes "${missing[@]}")"
    NeedRoom /var "${sizes[0]:-0}" 'fetching packages'
    NeedRoom /usr "${sizes[1]:-0}" 'installing packages'
    if ! "${apt[@]}" install --no-install-recommends "${missing[@]}" >"$buildFolder/logs/apt-install.log" 2>&1; then
        cat "$buildFolder/logs/apt-update.log" >>"$buildFolder/logs/apt-install.log"
        Fail "packages cannot be installed: $(LastReason "$buildFolder/logs/apt-install.log") (all of it: build/logs/apt-install.log)"
    fi
}

# The machine's own package sources with "deb" turned into "deb-src", in a folder of their own: nothing of the machine's
# configuration is changed, and no root rights are needed.
WriteSourcePackageLists() {
    local parts=$1 list
    mkdir -p "$parts"
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -r "$list" ] && sed -nE 's/^[[:space:]]*deb(-src)?[[:space:]]/deb-src /p' "$list" >"$parts/$(basename "$list" .list).list"
    done
    for list in /etc/apt/sources.list.d/*.sources; do
        [ -r "$list" ] && sed -E 's/^Types:.*/Types: deb-src/' "$list" >"$parts/$(basename "$list")"
    done
    return 0
}

# Unpacks one of Debian's own source packages, with its security fixes, into a folder made anew: FetchSource PACKAGE FOLDER LOG
FetchSource() {
    local package=$1 work=$2 log=$3
    rm -rf "$work"
    mkdir -p "$work/parts" "$work/lists/partial" "$work/cache/archives/partial"
    NeedRoom "$work" 200 "building from the source package $package"
    WriteSourcePackageLists "$work/parts"
    cat >"$work/apt.conf" <<CONFIG
Dir::Etc::SourceList "/dev/null";
Dir::Etc::SourceParts "$work/parts";
Dir::State::Lists "$work/lists";
Dir::Cache "$work/cache";
APT::Sandbox::User "root";
Acquire::Languages "none";
CONFIG
    (cd "$work" && APT_CONFIG=$work/apt.conf apt-get -q update && APT_CONFIG=$work/apt.conf apt-get -q source --only-source "$package") \
        >"$log" 2>&1 || (cd "$work" && APT_CONFIG=$work/apt.conf apt-get -q source --only-source "$package") >>"$log" 2>&1 ||
        Fail "the source package $package cannot be fetched: $(LastReason "$log") (all of it: ${log#"$projectRoot"/})"
}

# Builds the console archiver for Windows, once.
BuildArchiver() {
    local finished=$buildFolder/archiver/7za.exe work=$buildFolder/archiver/work log=$buildFolder/logs/archiver.log
    [ -s "$finished" ] && return 0
    Say 'building the 7-Zip console archiver from the Debian source package 7zip (about two minutes, once)'
    FetchSource 7zip "$work" "$log"

    local source major
    source=$(find "$work" -maxdepth 1 -type d -name '7zip-*')
    # The file has Windows line ends in some releases.
    major=$(awk '$2 == "MY_VER_MAJOR" { print $3 }' "$source/C/7zVersion.h" | tr -d '\r')
    # Older releases follow links out of the folder that they extract to.
    [ "${major:-0}" -ge 25 ] || Fail "the source package 7zip is of release ${major:-unknown}; 25 or later is needed"
    # Some releases write a header's name in a case that MinGW's file has not, and link libraries likewise. A folder of our
    # own on the include path and the libraries in lower case leave the source as it was fetched.
    mkdir -p "$work/headers"
    printf '#include <ntsecapi.h>\n' >"$work/headers/NTSecAPI.h"
    Logged "$log" 'building the archiver' env CPLUS_INCLUDE_PATH="$work/headers" C_INCLUDE_PATH="$work/headers" make -C "$source/CPP/7zip/Bundles/Alone" -f makefile.gcc -j"$(nproc)" \
        IS_MINGW=1 SystemDrive=1 CROSS_COMPILE=x86_64-w64-mingw32- CC=x86_64-w64-mingw32-gcc-posix \
        CXX=x86_64-w64-mingw32-g++-posix RC=x86_64-w64-mingw32-windres USE_ASM= DISABLE_RAR=1 \
        LIB2='-loleaut32 -luuid -ladvapi32 -luser32 -lole32 -lgdi32 -lcomctl32 -lcomdlg32 -lshell32' O="$work/out"
    mv "$work/out/7za.exe" "$finished"
    rm -rf "$work"
}

# Builds the library that reads archives for Windows, once: static, and with nothing in it but what zip archives need.
BuildArchiveLibrary() {
    local finished=$buildFolder/libarchive work=$buildFolder/libarchive.work log=$buildFolder/logs/libarchive.log
    [ -s "$finished/libarchive.a" ] && return 0
    Say 'building the archive library from the Debian source package libarchive (about two minutes, once)'
    FetchSource libarchive "$work" "$log"

    local source without
    source=$(find "$work" -maxdepth 1 -type d -name 'libarchive-*')
    mkdir "$work/out" "$work/finished"
    read -ra without <<<"$(printf -- '--without-%s ' bz2lib libb2 iconv lz4 zstd lzma cng openssl xml2 expat)"
    (cd "$work/out" && Logged "$log" 'configuring the archive library' "$source/configure" --host=x86_64-w64-mingw32 \
        CC=x86_64-w64-mingw32-gcc-posix CFLAGS='-O2 -ffunction-sections -fdata-sections' --disable-shared --enable-static \
        --disable-dependency-tracking --disable-maintainer-mode --disable-bsdtar --disable-bsdcat --disable-bsdcpio \
        --disable-xattr --disable-acl "${without[@]}")
    Logged "$log" 'building the archive library' make -C "$work/out" -j"$(nproc)" libarchive.la
    cp "$source/libarchive/archive.h" "$source/libarchive/archive_entry.h" "$work/out/.libs/libarchive.a" "$work/finished"
    rm -rf "$finished"
    mv "$work/finished" "$finished"
    rm -rf "$work"
}

# Builds both at once: much of either is the network's work, or that of one processor.
BuildForeignParts() {
    BuildArchiveLibrary &
    local library=$!
    BuildArchiver
    wait "$library" || exit 1
}

ConfigurePreset() {
    local preset=$1 folder=$buildFolder/$1
    [ "$preset" != windows ] || BuildArchiveLibrary
    # A tree that was moved, copied or left half configured is configured anew.
    if [ -e "$folder/CMakeCache.txt" ] &&
        { [ ! -e "$folder/build.ninja" ] || ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$projectRoot" "$folder/CMakeCache.txt"; }; then
        rm -rf "$folder"
    fi
    if [ ! -e "$folder/build.ninja" ]; then
        NeedRoom "$buildFolder" 400 "building $preset"
        Logged "$buildFolder/logs/configure-$preset.log" "configuring $preset" cmake -S "$projectRoot" --preset "$preset"
    fi
}

# Configures and builds targets of a preset; without targets, all of it: BuildPreset PRESET [TARGET...]
BuildPreset() {
    local preset=$1 targets=()
    shift
    [ $# -gt 0 ] && targets=(--target "$@")
    ConfigurePreset "$preset"
    Say "building $preset"
    (cd "$projectRoot" && cmake --build --preset "$preset" "${targets[@]}") >"$buildFolder/logs/build-$preset.log" 2>&1 || {
        grep -E -A4 'error:|FAILED:|No space left' "$buildFolder/logs/build-$preset.log" | head -n 40 >&2
        Fail "building $preset failed: $(LastReason "$buildFolder/logs/build-$preset.log") (all of it: build/logs/build-$preset.log)"
    }
}

# Puts the archiver beside the program.
InstallArchiver() {
    local target=$buildFolder/windows/bin/7Za.exe
    cmp -s "$buildFolder/archiver/7za.exe" "$target" && return 0
    mkdir -p "$(dirname "$target")"
    cp "$buildFolder/archiver/7za.exe" "$target.new" && mv "$target.new" "$target"
}

# Takes the set-up for this process alone; a second command waits for the first one's set-up to end.
BeginSetup() {
    mkdir -p "$buildFolder/logs" 2>/dev/null || Fail "cannot write to $buildFolder"
    exec 9>"$buildFolder/.setup-lock"
    flock -n 9 || { Say 'waiting for another set-up to end'; flock 9; }
}

EndSetup() { exec 9>&-; }
