#!/usr/bin/env bash
# Makes the weights of the base recogniser anew: installs the faces, makes patches of them, fits the network, and writes
# src/engine/recogniser/BaseWeights.bin and the examples that its tests compare with.
#
#     tools/fit.sh                  some 45 minutes on 4 cores that others use too
#     tools/fit.sh --small FOLDER   a fit too short to be good, of a few minutes, which leaves its weights in FOLDER
#
# On one machine the same sources, faces and packages give the same weights to the digit. Fitting takes two threads.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
face_packages=(fonts-3270 fonts-adf-accanthis fonts-adf-baskervald fonts-adf-gillius fonts-adf-ikarius fonts-adf-mekanus fonts-adf-romande
    fonts-adf-solothurn fonts-adf-switzera fonts-adf-tribun fonts-adf-universalis fonts-adf-verana fonts-agave fonts-arapey
    fonts-atarismall fonts-averia-sans-gwf fonts-averia-serif-gwf fonts-b612 fonts-beteckna fonts-cabin fonts-cantarell
    fonts-century-catalogue fonts-cmu fonts-comfortaa fonts-comic-neue fonts-compagnon fonts-courier-prime
    fonts-crosextra-caladea fonts-crosextra-carlito fonts-dejavu-core fonts-dosis fonts-dustin fonts-ebgaramond fonts-essays1743
    fonts-eurofurence fonts-fantasque-sans fonts-fanwood fonts-firacode fonts-gemunu-libre fonts-georgewilliams
    fonts-gfs-artemisia fonts-gfs-didot fonts-gfs-neohellenic fonts-goudybookletter fonts-hack fonts-inconsolata fonts-inter
    fonts-jetbrains-mono fonts-junction fonts-jura fonts-karla fonts-karmilla fonts-lato fonts-league-mono fonts-league-spartan
    fonts-levien-museum fonts-liberation fonts-lindenhill fonts-linuxlibertine fonts-manrope fonts-millimetre fonts-monofur
    fonts-monoid fonts-monoid-loose fonts-mononoki fonts-morisawa-bizud-gothic fonts-mplus fonts-noto-extra fonts-okolaks
    fonts-oldstandard fonts-open-sans fonts-oxygen fonts-paratype fonts-pc fonts-pc-extra fonts-play fonts-prociono fonts-proggy
    fonts-quattrocento fonts-roadgeek fonts-roboto-fontface fonts-sil-andika fonts-sil-andikanewbasic fonts-sil-charis
    fonts-sil-doulos fonts-sil-gentium-basic fonts-sil-gentiumplus fonts-spleen fonts-stix fonts-tuffy fonts-unifont
    fonts-urw-base35 fonts-vollkorn fonts-yanone-kaffeesatz fonts-yrsa-rasa xfonts-100dpi xfonts-base xfonts-terminus
    hershey-fonts-data)
images=16000 checks=800 steps=36000
weights=$PWD/src/engine/recogniser/BaseWeights.bin examples=$PWD/tests/engine/corpus/recogniser_examples.bin
if [ "${1:-}" = --small ]; then
    images=300 checks=60 steps=300
    mkdir -p "$2"
    weights=$(readlink -f "$2")/weights.bin examples=$(readlink -f "$2")/examples.bin
elif [ $# -gt 0 ]; then
    echo "usage: tools/fit.sh [--small FOLDER]" >&2
    exit 2
fi
install_packages "${build_packages[@]}" libbenchmark-dev libpng-dev libfreetype-dev libopencv-dev libfann-dev libeigen3-dev zlib1g-dev \
    python3-torch python3-numpy libopenblas0-pthread "${face_packages[@]}"
cmake --preset bench >/dev/null
ninja -C build-bench dravik_patches >build-bench/build.log || { tail -n 60 build-bench/build.log >&2; exit 1; }
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
mkdir "$made"/{first,second,check}
patches() { build-bench/bench/dravik_patches "$@"; }
half=$((images / 2))
patches bench/fit/faces.txt "$made/second" $half 1 $half &
second=$!
patches bench/fit/check_faces.txt "$made/check" "$checks" 2
patches bench/fit/faces.txt "$made/first" $half 1 0
wait $second
{
    echo "patches of $images images of seed 1 in $(wc -l <bench/fit/faces.txt) faces (bench/fit/faces.txt), those to check with of $checks of seed 2 (bench/fit/check_faces.txt)"
    echo "faces from:"
    dpkg-query -W -f '${Package} ${Version}\n' "${face_packages[@]}"
} >"$made/sources"
/usr/bin/python3 bench/fit/fit.py "$made/first,$made/second" "$weights" --steps $steps --check "$made/check" --sources "$made/sources" --examples "$examples"
