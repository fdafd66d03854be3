# Sourced by scripts that build; see CMakePresets.json for the presets.
# shellcheck shell=bash

presets=(debug release asan tsan)

# check_preset NAME: ends the script when there is no such preset.
check_preset() {
    [[ " ${presets[*]} " == *" $1 "* ]] || fail "there is no preset '$1', only: ${presets[*]}"
}

# build_preset PRESET [-DVARIABLE=VALUE]...: builds build/PRESET, configuring it first when that is needed.
build_preset() {
    local preset=$1 quiet=()
    configure_preset "$@" || return
    say "Building $preset"
    [[ -t 1 ]] || quiet=(-- --quiet)
    cmake --build --preset "$preset" --parallel "$(nproc)" "${quiet[@]}"
}

# configure_preset PRESET [-DVARIABLE=VALUE]...: needed when the folder is new, and when presets or variables changed.
# Changed CMakeLists.txt files need nothing here: the build notices those.
configure_preset() {
    local preset=$1 folder=$root/build/$1
    local stamp=$folder/configured-with
    shift
    if [[ -f $folder/build.ninja && $stamp -nt CMakePresets.json && $(<"$stamp") == "$*" ]]; then return 0; fi
    prefer_packages ccache qttranslations5-l10n # the latter: Qt's own texts in other languages
    say "Configuring $preset"
    cmake --preset "$preset" "$@" || return
    echo "$*" >"$stamp"
}
