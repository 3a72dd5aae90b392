#!/usr/bin/env bash
# Who may know whom. Finds includes and names that point the wrong way:
#   - a room of the host includes only the rooms that it may know; what is particular to a system (POSIX, Windows, a
#     terminal library) is included in host/platform only;
#   - a room of host/api includes only the rooms of host/api that it may know, and nothing there lies outside a room;
#   - source/ includes <maya/...>, oneTBB, the standard library and its own headers; its rooms and common know each other
#     downwards only, know nothing of argument parsing, and the files that compute on plain arrays know no <maya/...>;
#   - host/include knows no room of the host;
#   - no <maya/...> header and no M-class appears in the host below host/api and host/include.
#
#   scripts/check-dependencies.sh [tree]          checks that tree (default: this checkout)
#   scripts/check-dependencies.sh --self-test     shows that each kind of violation is found
set -euo pipefail

# Rooms that each room may know besides itself. Kept in step with docs/architecture.md.
declare -A known_rooms=(
    [text]=""
    [graph]="text"
    [geometry]="text"
    [platform]=""
    [mel]="graph text"
    [nodes]="graph geometry text"
    [scene]="graph geometry nodes text"
    [render]="geometry"
    [commands]="graph geometry nodes scene mel render platform text"
    [api]="graph geometry nodes scene mel render commands platform text"
    [runtime]="graph geometry nodes scene mel commands api platform text"
    [batch]="graph geometry nodes scene mel commands api runtime platform text"
)

# Rooms of host/api. What they may know of the other rooms is the row of api above.
declare -A known_api_rooms=(
    [values]=""
    [handles]="values"
    [functionSets]="handles values"
    [commands]="handles values"
    [plugin]="commands functionSets handles values"
)

# Rooms of source/, with common in its place among them. The commands, and whatever else lies beside common, know all.
declare -A known_module_rooms=(
    [files]=""
    [scene]=""
    [symmetry]="scene files"
    [common]="symmetry scene files"
    [weights]="common symmetry scene files"
    [regions]="common symmetry scene files"
    [targets]="common symmetry scene files"
)
# What works on plain arrays and text: patterns of files below source/.
plain_files=("files/*" "symmetry/meshTopology.*" "symmetry/symmetryShells.*" "symmetry/mirrorPlaces.*"
    "symmetry/cornerTraits.*" "symmetry/nearPairs.*" "symmetry/partnerLookup.*" "symmetry/plainPoints.*"
    "symmetry/pointGrid.*" "regions/regionWeights.*" "regions/regionColors.*"
    "regions/regionFile.*" "weights/weightFile.*")
parsing_headers=" maya/MArgDatabase.h maya/MArgList.h maya/MArgParser.h maya/MSyntax.h "

standard_headers=" algorithm any array atomic bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits clocale
cmath codecvt complex condition_variable csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype
deque exception execution filesystem forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream
iterator limits list locale map memory memory_resource mutex new numeric optional ostream queue random ratio regex scoped_allocator
set shared_mutex sstream stack stdexcept streambuf string string_view strstream system_error thread tuple type_traits typeindex
typeinfo unordered_map unordered_set utility valarray variant vector "
standard_headers=${standard_headers//$'\n'/ }

violations=0
violation() {
    echo "$1: $2" >&2
    violations=$((violations + 1))
}

# Prints "line:include" for each include directive, quotes or brackets kept.
includes_of() {
    { grep -nE '^[[:space:]]*#[[:space:]]*include' "$1" || true; } |
        sed -E 's/^([0-9]+):[[:space:]]*#[[:space:]]*include[[:space:]]*([<"][^>"]*[>"]).*/\1:\2/'
}

sources_in() {
    [[ ! -d "$1" ]] || find "$1" \( -name '*.cpp' -o -name '*.h' \) | sort
}

check_room() {
    local room=$1 file line include name target
    while read -r file; do
        while IFS=: read -r line include; do
            name=${include:1:-1}
            target=${name%%/*}
            if [[ "$target" == maya && "$room" != api ]]; then
                violation "$file:$line" "$room includes <$name>: the host's API is known to host/api only"
            elif [[ "$target" != "$name" && -n "${known_rooms[$target]+room}" && "$target" != "$room" &&
                " ${known_rooms[$room]} " != *" $target "* ]]; then
                violation "$file:$line" "$room may not know $target ($name)"
            elif [[ "$room" == api && "$name" == api/* ]]; then
                check_api_include "$(api_room "${file#"$tree/host/"}")" "$file:$line" "$name"
            elif [[ "$include" == '<'* ]]; then
                check_system_include "$room" "$file:$line" "$name"
            fi
        done < <(includes_of "$file")
        if [[ "$room" != api ]]; then
            check_no_m_class "$room" "$file"
        elif [[ -z "$(api_room "${file#"$tree/host/"}")" ]]; then
            violation "$file" "lies in no room of host/api"
        fi
    done < <(sources_in "$tree/host/$room")
}

# The room of host/api that api/<room>/<file> names; nothing when there is none of that name.
api_room() {
    local room=${1#api/}
    room=${room%%/*}
    [[ -z "${known_api_rooms[$room]+room}" ]] || echo "$room"
}

check_api_include() {
    local room=$1 place=$2 name=$3 target
    target=$(api_room "$name")
    if [[ -z "$target" ]]; then
        violation "$place" "\"$name\" names no room of host/api"
    elif [[ "$room" != "$target" && " ${known_api_rooms[$room]:-} " != *" $target "* ]]; then
        violation "$place" "api/$room may not know api/$target ($name)"
    fi
}

check_system_include() {
    local room=$1 place=$2 name=$3
    case "$room:$name" in
        platform:* | render:embree3/* | render:png.h | *:tbb/* | *:oneapi/tbb* | api:maya/* | api:hostPrivate/*) ;;
        *) [[ "$standard_headers" == *" $name "* ]] ||
            violation "$place" "$room may not include <$name>: no header of the C++17 standard library" ;;
    esac
}

# An M-class outside comments and strings: MObject, MFnMesh, MItDag, MPxCommand, MDGModifier, ...
check_no_m_class() {
    local line text
    while IFS=: read -r line text; do
        violation "$2:$line" "$1 names a class of the host's API:$text"
    done < <(sed -E -e 's/"([^"\\]|\\.)*"/""/g' -e 's://.*$::' "$2" |
        grep -nE '\bM(DG|DA)?[A-Z][a-z][A-Za-z]*\b' || true)
}

check_host_headers() {
    local file line include target
    while read -r file; do
        while IFS=: read -r line include; do
            target=${include:1:-1}
            target=${target%%/*}
            [[ -z "${known_rooms[$target]+room}" ]] ||
                violation "$file:$line" "the API's headers may not know $target: a plug-in sees no room of the host"
        done < <(includes_of "$file")
    done < <(sources_in "$tree/host/include")
}

# The room of a file of source/ by its path there: its folder; for common itself, for the others "commands".
module_room() {
    case "$1" in
        */*) echo "${1%%/*}" ;;
        common.*) echo common ;;
        *) echo commands ;;
    esac
}

check_module() {
    local file line include name room
    for folder in "$tree"/source/*/; do
        room=$(basename "$folder")
        [[ "$room" == '*' || -n "${known_module_rooms[$room]+room}" ]] ||
            violation "$folder" "a room without a rule: add it to scripts/check-dependencies.sh"
    done
    while read -r file; do
        room=$(module_room "${file#"$tree/source/"}")
        while IFS=: read -r line include; do
            name=${include:1:-1}
            case "$include" in
                '<maya/'*) check_maya_include "$room" "$file:$line" "$name" ;;
                '<tbb/'* | '<oneapi/tbb'*) ;;
                '"'*) check_module_include "$room" "$file:$line" "$name" ;;
                *) [[ "$standard_headers" == *" $name "* ]] ||
                    violation "$file:$line" "<$name> is neither <maya/...>, oneTBB nor the C++17 standard library" ;;
            esac
        done < <(includes_of "$file")
    done < <(sources_in "$tree/source")
}

check_module_include() {
    local room=$1 place=$2 name=$3 target
    if [[ ! -f "$tree/source/$name" ]]; then
        violation "$place" "\"$name\" is no header of source/"
        return
    fi
    target=$(module_room "$name")
    [[ "$room" == commands || "$room" == "$target" || " ${known_module_rooms[$room]:-} " == *" $target "* ]] ||
        violation "$place" "$room may not know $target ($name)"
}

check_maya_include() {
    local room=$1 place=$2 name=$3 pattern
    [[ "$room" == commands || "$parsing_headers" != *" $name "* ]] ||
        violation "$place" "$room includes <$name>: only commands know of arguments"
    for pattern in "${plain_files[@]}"; do
        # shellcheck disable=SC2053
        [[ "${place#"$tree/source/"}" != $pattern ]] || violation "$place" "a file on plain arrays includes <$name>"
    done
}

check_tree() {
    tree=$1
    violations=0
    local room folder
    for folder in "$tree"/host/*/; do
        room=$(basename "$folder")
        [[ "$room" == include || "$room" == '*' ]] && continue
        if [[ -n "${known_rooms[$room]+room}" ]]; then
            check_room "$room"
        else
            violation "$folder" "a room without a rule: add it to scripts/check-dependencies.sh"
        fi
    done
    check_host_headers
    check_module
}

# Where a room of the host has its files: host/api in its own rooms.
host_folder() {
    [[ "$1" == api ]] && echo api/handles || echo "$1"
}

# A header of a room of source/.
module_header() {
    [[ "$1" == common ]] && echo common.h || echo "$1/thing.h"
}

# expect <found|clean> <what> <file> <line of code>: a tree of that one file.
expect() {
    local expected=$1 what=$2 file=$3 code=$4 sample found=clean
    sample=$(mktemp -d)
    mkdir -p "$sample/source" "$sample/host/graph" "$(dirname "$sample/$file")"
    local room
    for room in "${!known_module_rooms[@]}"; do
        [[ "$room" == common ]] || mkdir -p "$sample/source/$room"
        touch "$sample/source/$(module_header "$room")"
    done
    touch "$sample/source/commandSupport.h"
    printf '%s\n' "$code" >"$sample/$file"
    check_tree "$sample" 2>/dev/null
    [[ $violations -eq 0 ]] || found=found
    rm -rf "$sample"
    if [[ "$found" != "$expected" ]]; then
        echo "check-dependencies: self-test: $what should be $expected, is $found" >&2
        exit 1
    fi
}

self_test() {
    local room target
    for room in "${!known_rooms[@]}"; do
        for target in "${!known_rooms[@]}"; do
            if [[ "$room" == "$target" || " ${known_rooms[$room]} " == *" $target "* ]]; then
                expect clean "$room -> $target" "host/$(host_folder "$room")/sample.cpp" "#include \"$(host_folder "$target")/thing.h\""
            else
                expect found "$room -> $target" "host/$(host_folder "$room")/sample.cpp" "#include \"$(host_folder "$target")/thing.h\""
            fi
        done
    done
    for room in "${!known_api_rooms[@]}"; do
        for target in "${!known_api_rooms[@]}"; do
            if [[ "$room" == "$target" || " ${known_api_rooms[$room]} " == *" $target "* ]]; then
                expect clean "api/$room -> api/$target" "host/api/$room/sample.cpp" "#include \"api/$target/thing.h\""
            else
                expect found "api/$room -> api/$target" "host/api/$room/sample.cpp" "#include \"api/$target/thing.h\""
            fi
        done
    done
    expect found "a file outside the rooms of host/api" host/api/sample.cpp ''
    expect found "a room of host/api without a rule" host/api/attic/sample.cpp ''
    expect found "a header outside the rooms of host/api" host/api/handles/sample.cpp '#include "api/thing.h"'
    local source
    for room in "${!known_module_rooms[@]}"; do
        source=$(module_header "$room")
        source=source/${source%.h}.cpp
        for target in "${!known_module_rooms[@]}"; do
            if [[ "$room" == "$target" || " ${known_module_rooms[$room]} " == *" $target "* ]]; then
                expect clean "$room -> $target" "$source" "#include \"$(module_header "$target")\""
            else
                expect found "$room -> $target" "$source" "#include \"$(module_header "$target")\""
            fi
        done
        expect found "arguments in $room" "$source" '#include <maya/MArgList.h>'
        expect found "the commands' protocol in $room" "$source" '#include "commandSupport.h"'
    done
    expect clean "arguments in a command" source/sample.cpp $'#include "regions/thing.h"\n#include <maya/MArgList.h>'
    expect clean "an API header in a room" source/symmetry/sample.cpp '#include <maya/MIntArray.h>'
    expect found "an API header on plain arrays" source/symmetry/meshTopology.h '#include <maya/MIntArray.h>'
    expect found "an API header among the files" source/files/sample.cpp '#include <maya/MString.h>'
    expect found "a room of source/ without a rule" source/attic/sample.cpp ''
    expect found "an arrow with odd spacing" host/graph/sample.h '  #  include <nodes/mesh.h> // why'
    expect found "a room without a rule" host/attic/sample.cpp ''
    expect found "an API header below api" host/nodes/sample.cpp '#include <maya/MObject.h>'
    expect found "an M-class below api" host/nodes/sample.cpp 'static MFnMesh mesh;'
    expect found "a dependency-graph class below api" host/nodes/sample.cpp 'MDGModifier modifier;'
    expect clean "an M-class in a comment" host/nodes/sample.cpp 'int a = 0;  // as MFnMesh does'
    expect clean "an M-class in a text" host/nodes/sample.cpp 'const char* a = "MFnMesh";'
    expect clean "MEL and MIT" host/mel/sample.cpp 'int MEL = 0; int MAX_DEPTH = 1;'
    expect clean "an API header in api" host/api/handles/sample.cpp '#include <maya/MObject.h>'
    expect found "POSIX outside platform" host/mel/sample.cpp '#include <unistd.h>'
    expect clean "POSIX in platform" host/platform/sample.cpp '#include <dlfcn.h>'
    expect found "a library outside platform" host/geometry/sample.cpp '#include <zlib.h>'
    expect found "PNG files outside render" host/commands/sample.cpp '#include <png.h>'
    expect clean "PNG files in render" host/render/sample.cpp '#include <png.h>'
    expect found "a room in the API's headers" host/include/maya/MObject.h '#include "graph/node.h"'
    expect clean "API headers among themselves" host/include/maya/MObject.h '#include <maya/MStatus.h>'
    expect clean "what the module uses" source/sample.cpp \
        $'#include "common.h"\n#include <maya/MObject.h>\n#include <oneapi/tbb/parallel_for.h>\n#include <vector>'
    expect found "POSIX in the module" source/sample.cpp '#include <unistd.h>'
    expect found "C's own headers in the module" source/sample.cpp '#include <math.h>'
    expect found "the host in the module" source/sample.cpp '#include "graph/node.h"'
    expect found "a room in brackets in the module" source/sample.cpp '#include <graph/node.h>'
    echo "check-dependencies: self-test passed"
}

if [[ "${1:-}" == --self-test ]]; then
    self_test
    exit 0
fi

check_tree "${1:-$(cd "$(dirname "$0")/.." && pwd)}"
if [[ $violations -gt 0 ]]; then
    echo "check-dependencies: $violations violation(s)" >&2
    exit 1
fi
echo "check-dependencies: every include is allowed"
