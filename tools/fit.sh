#!/usr/bin/env bash
# Makes the weights of the base recogniser and of the networks of boundaries and of ink anew: installs the faces, makes
# patches, lines and pictures of them, fits the networks, and writes src/engine/recogniser/BaseWeights.bin,
# BoundaryWeights.bin and InkWeights.bin and the examples that their tests compare with.
#
#     tools/fit.sh                  some 110 minutes on 4 cores that others use too
#     tools/fit.sh base             the base recogniser alone: 45 minutes
#     tools/fit.sh boundaries       the boundaries alone: 20 minutes
#     tools/fit.sh ink              the ink alone: 45 minutes
#     tools/fit.sh --small FOLDER   fits too short to be good, of a few minutes, which leave their weights in FOLDER
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
images=16000 checks=800 steps=36000 line_images=24000 line_checks=600 line_steps=12000 ink_images=30000 ink_checks=300 ink_steps=12000
networks="base boundaries ink" weights=$PWD/src/engine/recogniser examples=$PWD/tests/engine/corpus
if [ "${1:-}" = --small ]; then
    images=300 checks=60 steps=300 line_images=300 line_checks=40 line_steps=150 ink_images=200 ink_checks=20 ink_steps=60
    mkdir -p "$2"
    weights=$(readlink -f "$2") examples=$weights
elif [ "${1:-}" = base ] || [ "${1:-}" = boundaries ] || [ "${1:-}" = ink ]; then
    networks=$1
elif [ $# -gt 0 ]; then
    echo "usage: tools/fit.sh [base|boundaries|ink|--small FOLDER]" >&2
    exit 2
fi
install_packages "${build_packages[@]}" libbenchmark-dev libpng-dev libfreetype-dev libopencv-dev libfann-dev libeigen3-dev zlib1g-dev \
    python3-torch python3-numpy libopenblas0-pthread "${face_packages[@]}"
cmake --preset bench >/dev/null
ninja -C build-bench dravik_patches dravik_boundaries dravik_ink >build-bench/build.log || { tail -n 60 build-bench/build.log >&2; exit 1; }
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
# make_of PROGRAM IMAGES SEED CHECKS CHECK_SEED: into first, second and check of a folder of its name
make_of() {
    local half=$(($2 / 2))
    mkdir -p "$made/$1"/{first,second,check}
    "build-bench/bench/dravik_$1" bench/fit/faces.txt "$made/$1/second" $half "$3" $half &
    local second=$!
    "build-bench/bench/dravik_$1" bench/fit/check_faces.txt "$made/$1/check" "$4" "$5"
    "build-bench/bench/dravik_$1" bench/fit/faces.txt "$made/$1/first" $half "$3" 0
    wait $second
    {
        echo "$1 of $2 images of seed $3 in $(wc -l <bench/fit/faces.txt) faces (bench/fit/faces.txt), those to check with of $4 of seed $5 (bench/fit/check_faces.txt)"
        echo "faces from:"
        dpkg-query -W -f '${Package} ${Version}\n' "${face_packages[@]}"
    } >"$made/$1/sources"
}
# fit_of PROGRAM SCRIPT WEIGHTS EXAMPLES STEPS
fit_of() {
    /usr/bin/python3 "bench/fit/$2" "$made/$1/first,$made/$1/second" "$3" --steps "$5" --check "$made/$1/check" --sources "$made/$1/sources" --examples "$4"
}
for network in $networks; do
    if [ "$network" = base ]; then
        make_of patches $images 1 $checks 2
        fit_of patches fit.py "$weights/BaseWeights.bin" "$examples/recogniser_examples.bin" $steps
    elif [ "$network" = ink ]; then
        make_of ink $ink_images 7 $ink_checks 8
        fit_of ink fit_ink.py "$weights/InkWeights.bin" "$examples/ink_examples.bin" $ink_steps
    else
        make_of boundaries $line_images 11 $line_checks 12
        fit_of boundaries fit_boundaries.py "$weights/BoundaryWeights.bin" "$examples/boundary_examples.bin" $line_steps
    fi
    rm -rf "$made"/patches "$made"/boundaries "$made"/ink
done
