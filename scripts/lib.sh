# What the scripts share; sourced by them. Sets `root` (the clone), `preset` and `build` (the build folder).
# VGUI_PRESET chooses a preset of CMakePresets.json, VGUI_BUILD_DIR another folder than the preset's own.
# shellcheck shell=bash
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
preset=${VGUI_PRESET:-mingw}
build=$root/build${preset#mingw}
build=${VGUI_BUILD_DIR:-$build}
[[ $build == /* ]] || build=$PWD/$build

say() { printf '== %s\n' "$*"; }

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

windows_path() {
    local path=Z:$1
    printf '%s\n' "${path//\//\\}"
}

# run_child COMMAND...: runs it so that an interrupt of this script alone reaches it too: the shell would
# otherwise wait for the command to end before looking at its traps.
child=
run_child() {
    local status=0
    "$@" <&0 &
    child=$!
    wait "$child" || status=$?
    child=
    return "$status"
}

end_child() {
    [[ -n $child ]] || return 0
    kill -TERM "$child" 2>/dev/null || true
    wait "$child" 2>/dev/null || true
    child=
}

# exit_on_signals: turns the usual signals into an ordinary exit, so that one EXIT trap cleans up.
exit_on_signals() {
    trap 'exit 130' INT
    trap 'exit 143' TERM
    trap 'exit 129' HUP
}

# configure_and_build [TARGET...]: all that is built by default unless targets are named.
configure_and_build() {
    say "configuring $build"
    mkdir -p "$build"
    run_child cmake --preset "$preset" -S "$root" -B "$build" ${VGUI_WERROR:+-DVGUI_WERROR="$VGUI_WERROR"} \
        >"$build/configure.log" 2>&1 || {
        cat "$build/configure.log" >&2
        die "the build could not be configured"
    }
    say "building"
    run_child cmake --build "$build" ${1:+--target "$@"} || die "the build failed"
}
