# Sourced by scripts that build; see CMakePresets.json for the presets.
# shellcheck shell=bash

presets=(debug release asan tsan)

# check_preset NAME: exits with an error if there is no such preset.
check_preset() {
    [[ " ${presets[*]} " == *" $1 "* ]] || fail "there is no preset '$1', only: ${presets[*]}"
}

# build_preset PRESET [-DVARIABLE=VALUE]...: builds $build_target in build/PRESET, configuring it first if necessary.
build_target=all
build_preset() {
    local preset=$1 quiet=()
    configure_preset "$@" || return
    say "Building $preset"
    [[ -t 1 ]] || quiet=(-- --quiet)
    cmake --build --preset "$preset" --target "$build_target" --parallel "$(nproc)" "${quiet[@]}"
}

# configure_preset PRESET [-DVARIABLE=VALUE]...: configures a new folder, or again if presets or variables have changed.
# The build itself notices changed CMakeLists.txt files.
configure_preset() {
    local preset=$1 folder=$root/build/$1
    local stamp=$folder/configured-with
    shift
    if [[ -f $folder/build.ninja && $stamp -nt CMakePresets.json && $(<"$stamp") == "$*" ]]; then return 0; fi
    prefer_packages ccache qttranslations5-l10n # the latter: Qt's own translations
    say "Configuring $preset"
    cmake --preset "$preset" "$@" || return
    echo "$*" >"$stamp"
}
