# Wine prefixes and sessions; sourced after lib.sh, by the scripts that start Windows programs.
# set_wine_home BUILD_FOLDER comes first; what lies in the folder that it sets:
#
# $wine_home/master        the prefix all others are cloned from; nothing runs in it
# $wine_home/session.*/    one session: slot folders, each with a prefix, its display and what was started
# $wine_home/locale        the Chinese locale; the machine need not have it
# $wine_home/home          stands in for the home folder, so that nothing of the user's is touched
# shellcheck shell=bash disable=SC2154

set_wine_home() {
    wine_home=$1/wine
    mkdir -p "$wine_home/home"
}

# Wine's loader lies at 7d000000, and Linux starts its heap at a random place in the gigabyte behind: once in
# some 5,000 starts upon 7ffe0000, where Windows keeps the data that all processes share, and the program ends
# with code 1 without a word. A layout that is not random has the heap begin right behind the loader. Not
# every container may ask for it.
fixed_layout=()
! setarch --addr-no-randomize true 2>/dev/null || fixed_layout=(setarch --addr-no-randomize)

# with_wine PREFIX DISPLAY COMMAND...: replaces nothing but the environment and the random memory layout. The
# display may be empty. The Chinese locale gives Windows programs code page 936, and paths in UTF-8.
with_wine() {
    local prefix=$1 display=$2
    shift 2
    env -u DISPLAY -u WAYLAND_DISPLAY -u XDG_CACHE_HOME -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u LANG -u LANGUAGE \
        HOME="$wine_home/home" ${display:+DISPLAY="$display"} \
        WINEPREFIX="$prefix" WINEARCH=win64 WINEDEBUG="${VGUI_WINEDEBUG:--all}" \
        WINEDLLOVERRIDES='mscoree=;winemenubuilder.exe=' \
        LOCPATH="$wine_home/locale" LC_ALL=zh_CN.UTF-8 FONTCONFIG_FILE="$root/scripts/fonts.conf" \
        "${fixed_layout[@]}" "$@"
}

quietly() { "$@" </dev/null >/dev/null 2>&1; }

end_wine() { # PREFIX: ends everything that runs in it
    quietly with_wine "$1" '' timeout 20 wineserver -k || true
    quietly with_wine "$1" '' timeout 20 wineserver -w || true
}

prefix_recipe() {
    { wine_version; cat "$root/scripts/wine-prefix.reg" "$root/scripts/wine.sh"; } | sha256sum
}

wine_version() { WINEDEBUG=-all wine --version; }

# prepare_prefix: makes the master prefix unless it is there and made by today's recipe. The caller's EXIT
# trap has to call abandon_prefix.
prefix_in_making=
prepare_prefix() {
    local recipe master=$wine_home/master
    recipe=$(prefix_recipe)
    exec 9>"$wine_home/master.lock"
    flock 9
    if [[ ! -f $wine_home/master.recipe || $(<"$wine_home/master.recipe") != "$recipe" ]]; then
        say "preparing the Wine prefix"
        rm -rf "$master" "$wine_home/master.recipe"
        prefix_in_making=$master
        run_child make_prefix "$master" 9>&- || die "the Wine prefix could not be made"
        prefix_in_making=
        printf '%s\n' "$recipe" >"$wine_home/master.recipe"
    fi
    exec 9>&-
}

abandon_prefix() {
    [[ -z $prefix_in_making ]] || end_wine "$prefix_in_making"
}

make_prefix() {
    local prefix=$1
    rm -rf "$wine_home/locale"
    mkdir "$wine_home/locale"
    quietly localedef -i zh_CN -f UTF-8 "$wine_home/locale/zh_CN.UTF-8" || return
    quietly with_wine "$prefix" '' timeout 180 wine wineboot -i || return
    # Value names beyond ASCII are read from UTF-16 only.
    iconv -f UTF-8 -t UTF-16 "$root/scripts/wine-prefix.reg" >"$prefix/drive_c/settings.reg" || return
    quietly with_wine "$prefix" '' timeout 60 wine regedit /S 'C:\settings.reg' || return
    # Wine's own fonts, among them the one with the signs of title bars, are not always looked for where
    # the distribution has put them.
    if [[ -d /usr/share/wine/fonts ]]; then
        ln -sf /usr/share/wine/fonts/* "$prefix/drive_c/windows/Fonts/" || return
    fi
    end_wine "$prefix"
    [[ -f $prefix/user.reg ]] && grep -q '"Managed"="N"' "$prefix/user.reg"
}

clone_prefix() { # TARGET: files are shared with the master, the registry is not
    cp -al "$wine_home/master" "$1"
    local file
    for file in "$wine_home/master"/*.reg; do
        cp --remove-destination "$file" "$1/"
    done
}

# A process is remembered by its id and start time: an id alone may belong to another one by now.
start_time() { # PID
    local stat
    stat=$(<"/proc/$1/stat") 2>/dev/null || return 1
    stat=${stat##*) }
    set -- $stat
    printf '%s\n' "${20}"
}

remember_process() { # FILE PID
    printf '%s %s\n' "$2" "$(start_time "$2" || true)" >"$1"
}

remembered_alive() { # FILE
    local pid time
    [[ -f $1 ]] && read -r pid time <"$1" && [[ -n $time && $(start_time "$pid") == "$time" ]]
} 2>/dev/null

end_remembered() { # FILE
    local pid
    if remembered_alive "$1"; then
        read -r pid _ <"$1"
        kill -TERM "$pid" 2>/dev/null || true
        for _ in {1..100}; do
            remembered_alive "$1" || return 0
            sleep 0.05
        done
        kill -KILL "$pid" 2>/dev/null || true
    fi
}

# start_display SLOT: an X server on a display number that it finds itself. Its depth is display_depth, or 24.
start_display() {
    local slot=$1 number=
    : >"$slot/display.number"
    setsid Xvfb -displayfd 3 -screen 0 "1280x1024x${display_depth:-24}" -nolisten tcp -noreset -s 0 \
        3>"$slot/display.number" </dev/null >"$slot/xvfb.log" 2>&1 &
    remember_process "$slot/xvfb" $!
    for _ in {1..200}; do
        number=$(<"$slot/display.number")
        [[ -z $number ]] || break
        remembered_alive "$slot/xvfb" || return 1
        sleep 0.05
    done
    [[ -n $number ]] || return 1
    printf ':%s\n' "$number" >"$slot/display"
}

# start_slot SLOT: a display, and a Wine desktop on it that is up before anything else is started. What the
# first Windows program starts would otherwise inherit that program's output and keep its readers waiting.
start_slot() {
    local slot=$1 display
    mkdir -p "$slot"
    clone_prefix "$slot/prefix"
    start_display "$slot" || return 1
    display=$(<"$slot/display")
    with_wine "$slot/prefix" "$display" setsid wine "$wine_hold" </dev/null >/dev/null 2>&1 &
    remember_process "$slot/hold" $!
    for _ in {1..300}; do
        if xwininfo -display "$display" -root -tree 2>/dev/null | grep -q 'explorer\.exe'; then
            : >"$slot/ready"
            return 0
        fi
        remembered_alive "$slot/hold" || return 1
        sleep 0.1
    done
    return 1
}

end_slot() { # SLOT
    [[ ! -d $1/prefix ]] || end_wine "$1/prefix"
    end_remembered "$1/hold"
    end_remembered "$1/xvfb"
}

start_session() { # FOLDER SLOTS
    local folder=$1 slots=$2 i starters=() failed=0
    wine_hold=${wine_hold:-$build/bin/wine_hold.exe}
    [[ -f $wine_hold ]] || die "$wine_hold is missing: build first"
    mkdir -p "$folder"
    remember_process "$folder/owner" $$
    for ((i = 1; i <= slots; ++i)); do
        start_slot "$folder/slot$i" &
        starters+=($!)
    done
    for i in "${starters[@]}"; do
        wait "$i" || failed=1
    done
    ((failed == 0)) || {
        cat "$folder"/slot*/xvfb.log >&2 || true
        return 1
    }
}

end_session() { # FOLDER
    local slot enders=()
    [[ -d $1 ]] || return 0
    for slot in "$1"/slot*; do
        [[ -d $slot ]] || continue
        end_slot "$slot" &
        enders+=($!)
    done
    ((${#enders[@]} == 0)) || wait "${enders[@]}" || true
    rm -rf "$1"
}

# end_stale_sessions: what a killed script has left behind in this build folder.
end_stale_sessions() {
    local folder
    for folder in "$wine_home"/session.*; do
        [[ -d $folder && -f $folder/owner ]] || continue
        remembered_alive "$folder/owner" || end_session "$folder"
    done
}
