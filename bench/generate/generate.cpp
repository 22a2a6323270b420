// Makes labelled part images: lines to find and read, and sheets of all characters to learn a font from, in
// faces and under conditions that differ between the sets: the engine's weights are fitted on `learn`, its
// rules are made with `develop` and `develop2`, and the others are only for the last word.
//
//     dravik_generate
//     develop|develop2|held|fresh|unseen|unseen2|unseen3|unseen4|unseen5|unseen6|unseen7|unseen8|unseen9|
//     unseen10|learn usual|extreme|scenes FOLDER [LINES_PER_FACE [CHARSETS_PER_FACE]]
//
// `usual` and `extreme` say under what conditions the lines are seen, `scenes` has them on parts beside other
// things; the sheets are the same. Writes FOLDER/lines and FOLDER/charsets with their images, lines.tsv,
// boxes.tsv and meta.tsv.
#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "generate/Camera.h"
#include "generate/Conditions.h"
#include "generate/Scene.h"
#include "generate/Texts.h"
#include "generate/Typeface.h"

namespace dravik {

using namespace engine;
namespace {

struct Face {
    const char* name;
    const char* file;  // ".jhf" for strokes, "" for our own dots
    int rows = 0;      // of dots to a capital that an outline is brought to, 0 as the file has it
};

const std::vector<Face> kDevelop = {
    {"dejavu", "DejaVuSans.ttf"},
    {"dejavumono", "DejaVuSansMono.ttf"},
    {"libsans", "LiberationSans-Regular.ttf"},
    {"libmono", "LiberationMono-Bold.ttf"},
    {"libserif", "LiberationSerif-Regular.ttf"},
    {"hack", "Hack-Regular.ttf"},
    {"incons", "Inconsolata.otf"},
    {"roboto", "Roboto-Regular.ttf"},
    {"lato", "Lato-Bold.ttf"},
    {"b612mono", "B612Mono-Regular.otf"},
    {"jetbrains", "JetBrainsMono-Regular.ttf"},
    {"prime", "Courier Prime.otf"},
    {"term3270", "3270-Regular.ttf"},
    {"bebas", "BebasNeue-Regular.otf"},
    {"opencond", "OpenSans-CondBold.ttf"},
    {"road", "RG2014C.ttf"},
    {"futural", "futural.jhf"},
    {"rowmans", "rowmans.jhf"},
    {"dot5x7", ""},
    {"dot5x8", "5x8.pcf.gz"},
    {"dot6x9", "6x9.pcf.gz"},
    {"dot8x13", "8x13.pcf.gz"},
    {"dot9x15", "9x15.pcf.gz"},
};
// What the engine's weights are fitted on.
const std::vector<Face> kLearn = {
    {"p052", "P052-Roman.otf"},
    {"c059b", "C059-Bold.otf"},
    {"narrowb", "NimbusSansNarrow-Bold.otf"},
    {"narrow", "LiberationSansNarrow-Regular.ttf"},
    {"gothic", "URWGothic-Book.otf"},
    {"bookmand", "URWBookman-Demi.otf"},
    {"nimbusmono", "NimbusMonoPS-Bold.otf"},
    {"romanb", "NimbusRoman-Bold.otf"},
    {"roman", "NimbusRoman-Regular.otf"},
    {"robotob", "Roboto-Black.ttf"},
    {"robotoc", "RobotoCondensed-Bold.ttf"},
    {"latol", "Lato-Regular.ttf"},
    {"opens", "OpenSans-Regular.ttf"},
    {"condlight", "OpenSans-CondLight.ttf"},
    {"dejavub", "DejaVuSans-Bold.ttf"},
    {"dejavuserif", "DejaVuSerif.ttf"},
    {"dejavucond", "DejaVuSansCondensed-Bold.ttf"},
    {"dejavumonob", "DejaVuSansMono-Bold.ttf"},
    {"b612", "B612-Regular.otf"},
    {"jetbrainsb", "JetBrainsMono-ExtraBold.ttf"},
    {"primeb", "Courier Prime Bold.otf"},
    {"libmonor", "LiberationMono-Regular.ttf"},
    {"hackb", "Hack-Bold.ttf"},
    {"road2", "RG2014D.ttf"},
    {"interb", "Inter-Bold.otf"},
    {"interx", "Inter-Black.otf"},
    {"cantarellb", "Cantarell-Bold.otf"},
    {"ptsansb", "PTS75F.ttf"},
    {"ptmono", "PTM55F.ttf"},
    {"firacode", "FiraCode-Medium.ttf"},
    {"notosansb", "NotoSans-Bold.ttf"},
    {"notoserif", "NotoSerif-Regular.ttf"},
    {"cabin", "Cabin-Medium.otf"},
    {"karlab", "Karla-ExtraBold.otf"},
    {"oxygen", "Oxygen-Sans.ttf"},
    {"oxygenmono", "OxygenMono-Regular.ttf"},
    {"play", "Play-Bold.otf"},
    {"dosis", "Dosis-SemiBold.otf"},
    {"mononoki", "mononoki-Regular.ttf"},
    {"agave", "agave-b-autohinted.ttf"},
    {"monoid", "Monoid-Regular.ttf"},
    {"fantasque", "FantasqueSansMono-Regular.otf"},
    {"leaguemono", "LeagueMono-CondensedBold.otf"},
    {"carlitob", "Carlito-Bold.ttf"},
    {"gillius", "GilliusADF-Bold.otf"},
    {"verana", "VeranaSans-Bold.otf"},
    {"andika", "Andika-Regular.ttf"},
    {"tuffyb", "Tuffy_Bold.ttf"},
    {"slab", "RobotoSlab-Bold.otf"},
    {"jura", "Jura-Bold.otf"},
    {"latox", "Lato-Black.ttf"},
    {"opensx", "OpenSans-ExtraBold.ttf"},
    {"universalis", "UniversalisADFStd-Bold.otf"},
    {"robotobb", "Roboto-Bold.ttf"},
    {"timesr", "timesr.jhf"},
    {"rowmant", "rowmant.jhf"},
    {"dot4x6", "6x10.pcf.gz"},
    {"dot6x13", "6x13.pcf.gz"},
    {"dot9x18", "9x18.pcf.gz"},
    {"dot10x20", "10x20.pcf.gz"},
    {"dot6x13b", "6x13B.pcf.gz"},
    {"dotter12", "ter-u12n_iso-8859-1.pcf.gz"},
    {"dotter14", "ter-u14n_iso-8859-1.pcf.gz"},
    {"dotter16", "ter-u16n_iso-8859-1.pcf.gz"},
    {"dotter18b", "ter-u18b_iso-8859-1.pcf.gz"},
    {"dotcour10", "courR10.pcf.gz"},
    {"dotcour12", "courR12.pcf.gz"},
    {"dots5x8", "spleen-5x8.pcf.gz"},
    {"dots6x12", "spleen-6x12.pcf.gz"},
    {"dots8x16", "spleen-8x16.pcf.gz"},
};
const std::vector<Face> kHeld = {
    {"ocra", "OCRA.ttf"},
    {"ocrb", "OCRB.otf"},
    {"din", "OSP-DIN.ttf"},
    {"roadE", "RG2014E.ttf"},
    {"gomono", "Go-Mono.ttf"},
    {"notomono", "NotoMono-Regular.ttf"},
    {"freesans", "FreeSans.ttf"},
    {"libsansb", "LiberationSans-Bold.ttf"},
    {"anonymous", "Anonymous Pro.ttf"},
    {"rowmand", "rowmand.jhf"},
    {"futuram", "futuram.jhf"},
    {"dotX5x7", "5x7.pcf.gz"},
    {"dot7x13", "7x13.pcf.gz"},
    {"dot6x12", "6x12.pcf.gz"},
    {"dot7x14", "7x14.pcf.gz"},
};

// For the last word on what was made after `held` had been looked at a dozen times.
const std::vector<Face> kFresh = {
    {"osifont", "osifont.ttf"},
    {"routed", "routed-gothic.ttf"},
    {"hermit", "Hermit-medium.otf"},
    {"clearsans", "ClearSans-Regular.ttf"},
    {"nationalpark", "NationalPark-Heavy.otf"},
    {"gnutypewriter", "GNUTypewriter.ttf"},
    {"infofont", "tiresias_infofont.ttf"},
    {"quicksand", "Quicksand-Bold.ttf"},
    {"sora", "Sora-SemiBold.otf"},
    {"vt220", "Glass_TTY_VT220.ttf"},
    {"timesrb", "timesrb.jhf"},
    {"dotclean8x13", "clR8x13.pcf.gz"},
    {"dotclean8x12b", "clB8x12.pcf.gz"},
    {"dotclean6x8", "clR6x8.pcf.gz"},
    {"dotlut12", "lutRS12.pcf.gz"},
};

// The same, after `fresh` had been counted twice.
const std::vector<Face> kUnseen = {
    {"nanum", "NanumGothic.ttf"},
    {"nanumsquare", "NanumSquareB.ttf"},
    {"nanumcoding", "NanumGothicCoding.ttf"},
    {"barunb", "NanumBarunGothicBold.ttf"},
    {"loma", "Loma-Bold.ttf"},
    {"typist", "TlwgTypist-Bold.ttf"},
    {"sawarabi", "sawarabi-gothic-medium.ttf"},
    {"baekmuk", "dotum.ttf"},
    {"hline", "hline.ttf"},
    {"motoya", "MTLc3m.ttf"},
    {"manjari", "Manjari-Bold.otf"},
    {"padauk", "Padauk-Bold.ttf"},
    {"dotmodd13", "modd-iso8859-1-06x13.pcf.gz"},
    {"dotneep15", "neep-alt-iso10646-1-08x15.pcf.gz"},
    {"dotneep11", "neep-alt-iso8859-1-05x11.pcf.gz"},
};

// What the rules of finding are made with beside `develop`, to which they had been fitted.
const std::vector<Face> kDevelop2 = {
    {"libris", "LibrisADFStd-Bold.otf"},
    {"allerta", "allerta_medium.otf"},
    {"ipag", "ipagp.ttf"},
    {"zenhei", "wqy-zenhei.ttc"},
    {"garuda", "Garuda.ttf"},
    {"umpush", "Umpush-Light.ttf"},
    {"d2coding", "D2Coding-Ver1.3.2-20180524-all.ttc"},
    {"dyslexic", "OpenDyslexicMono-Regular.otf"},
    {"thabit", "Thabit.ttf"},
    {"rocknroll", "RocknRollOne-Regular.ttf"},
    {"uroob", "Uroob-Regular.ttf"},
    {"hanna", "BMHANNA_11yrs_ttf.ttf"},
    {"engadget", "Engadget.ttf"},
    {"laksaman", "Laksaman.ttf"},
    {"ume", "ume-pgo4.ttf"},
    {"jara", "Jara.ttf"},
    {"dotshin7x14", "shnm7x14a.pcf.gz"},
    {"dotmplus12", "mplus_f12r.pcf.gz"},
    {"dotkaname", "kaname-latin1.pcf.gz"},
    {"dotkoi8x13", "koi8x13_c.pcf.gz"},
    {"dotkoi10x16b", "koi10x16b_c.pcf.gz"},
};

// For the last word on what was made with `develop2`.
const std::vector<Face> kUnseen2 = {
    {"arundina", "ArundinaSansMono.ttf"},
    {"microhei", "wqy-microhei.ttc"},
    {"ungraphicb", "UnGraphicBold.ttf"},
    {"gulim", "LexiGulim.ttf"},
    {"mondulkiri", "Mondulkiri-R.ttf"},
    {"gayathri", "Gayathri-Regular.otf"},
    {"dohyeon", "BMDOHYEON_ttf.ttf"},
    {"klee", "KleeOne-SemiBold.ttf"},
    {"konatu", "Konatu.ttf"},
    {"sawasdeeb", "Sawasdee-Bold.ttf"},
    {"harmattan", "Harmattan-Regular.ttf"},
    {"dotefont14", "b14.pcf.gz"},
    {"dotetl16", "lt1-16-etl.pcf.gz"},
    {"dotkapl11", "Kaplscreen-11.pcf.gz"},
    {"dota12", "a12.pcf.gz"},
};

// For the last word on what was made after `unseen2` had been counted twice.
const std::vector<Face> kUnseen3 = {
    {"aboriginal", "AboriginalSansREGULAR9433.ttf"},
    {"chilanka", "Chilanka-Regular.otf"},
    {"cwhei", "cwheib.ttf"},
    {"rachana", "Rachana-Regular.ttf"},
    {"dyuthi", "Dyuthi-Regular.ttf"},
    {"keraleeyam", "Keraleeyam-Regular.ttf"},
    {"tenali", "TenaliRamakrishna-Regular.ttf"},
    {"ukij", "UKIJQol_Tuz.ttf"},
    {"mona", "mona.ttf"},
    {"saebom", "LexiSaebomR.ttf"},
    {"kaitim", "gkai00mp.ttf"},
    {"dotayu20", "10x20gm.pcf.gz"},
    {"dotkappa20b", "10x20b.pcf.gz"},
    {"dotfixedsys", "fixedsys.ttf"},
    {"dotgothic16", "DotGothic16-Regular.ttf", 12},
};

// For the last word on what was made after `unseen3` had been counted.
const std::vector<Face> kUnseen4 = {
    {"crystal", "crystal.ttf"},
    {"smiley", "SmileySans-Oblique.ttf"},
    {"shimenkanb", "ShimenkanGSM-Bold.ttf"},
    {"babelstone", "BabelStoneModern.ttf"},
    {"meera", "MeeraInimai-Regular.ttf"},
    {"anjali", "AnjaliOldLipi-Regular.ttf"},
    {"lohit", "Lohit-Devanagari.ttf"},
    {"nateli", "BPG_Nateli_Condenced_GPL&GNU.ttf"},
    {"teams", "teams.pfb"},
    {"berenisb", "BerenisADFPro-Bold.otf"},
    {"cardob", "Cardob101.ttf"},
    {"dotwqy9", "wenquanyi_9pt.pcf"},
    {"dotmaru14", "7x14maru.pcf.gz"},
    {"dotsixtyfour", "C-64-Regular.ttf", 7},
    {"dotnino", "BPG_Nino_Medium_GPL&GNU.ttf", 9},
};

// For the last word on what was made after `unseen4` had been counted.
const std::vector<Face> kUnseen5 = {
    {"nayone", "MyanmarNayone.ttf"},
    {"gantgaw", "MyanmarGantgaw.ttf"},
    {"taza", "UnTaza.ttf"},
    {"fantasmab", "Fantasma-Bold.otf"},
    {"nafees", "NafeesWeb.ttf"},
    {"twsung", "TW-Sung-98_1.ttf"},
    {"alkalami", "Alkalami-Light.ttf"},
    {"paktype", "PakType Naskh Basic.ttf"},
    {"timmana", "TimmanaRegular.ttf"},
    {"quercusb", "Quercus_Bold.ttf"},
    {"nksmart", "NK_SSmart2.ttf"},
    {"dotscreen18", "screen11x18_c.pcf.gz"},
    {"dotproof16", "proof9x16_c.pcf.gz"},
    {"dotphetsot", "MyanmarPhetsot.ttf", 9},
    {"dotchatu", "MyanmarChatu.ttf", 9},
};

// For the last word on what was made after `unseen5` had been counted.
const std::vector<Face> kUnseen6 = {
    {"bandal", "Bandal.ttf"},
    {"siemreap", "KhmerOSsiemreap.ttf"},
    {"manchu", "ManchuFont.ttf"},
    {"suruma", "Suruma.ttf"},
    {"monlam", "Monlam Uni Sans Serif.ttf"},
    {"stick", "Stick-Regular.ttf"},
    {"oradano", "OradanoGSRR.ttf"},
    {"symbola", "Symbola_hint.ttf"},
    {"junicode", "JunicodeTwoBeta-Condensed.otf"},
    {"hanazono", "HanaMinA.ttf"},
    {"amirib", "Amiri-Bold.ttf"},
    {"dotcreep", "creep2.otb"},
    {"dothomespun", "homespun.ttf", 7},
    {"dotbangwool", "Bangwool.ttf", 9},
    {"dotmingti", "bsmi00lp.ttf", 12},
};

// For the last word on what was made after `unseen6` had been counted.
const std::vector<Face> kUnseen7 = {
    {"yusei", "YuseiMagic-Regular.ttf"},
    {"reggae", "ReggaeOne-Regular.ttf"},
    {"summersby", "summersby.ttf"},
    {"sophiab", "SNB.ttf"},
    {"galatia", "GalSILR.ttf"},
    {"elstob", "ElstobD-SemiBold.otf"},
    {"lemonada", "Lemonada-SemiBold.otf"},
    {"irianisb", "IrianisADFStd-Bold.otf"},
    {"sundar", "RIT-Sundar.ttf"},
    {"damase", "damase.ttf"},
    {"paranarb", "TSCu_paranarb.ttf"},
    {"dotmitra", "MitraMono.ttf", 9},
    {"dotamiga", "Amiga-Regular.ttf", 7},
    {"dotmisaki", "misaki_gothic.ttf", 7},
    {"dotphetsarath", "Phetsarath_OT.ttf", 9},
};

// For the last word on what was made after `unseen7` had been counted.
const std::vector<Face> kUnseen8 = {
    {"imfell", "IMFePIrm29P.ttf"},
    {"atavyros", "Atavyros.otf"},
    {"seto", "setofont.ttf"},
    {"gorda", "BPG_Gorda_GNU-GPL.ttf"},
    {"algeti", "BPG_Algeti_GPL&GNU.ttf"},
    {"khyay", "MyanmarKhyay.ttf"},
    {"sabae", "MyanmarSabae.ttf"},
    {"jua", "BMJUA_ttf.ttf"},
    {"aroania", "Aroania_hint.ttf"},
    {"radis", "RadisSans-medium.otf"},
    {"xipital", "xipital.ttf"},
    {"dotteletext", "teletext2.pcf.gz"},
    {"dotsmalljp", "small_fonts_jp.ttf"},
    {"dotdinaru", "UnDinaru.ttf", 9},
    {"dotuchen", "DDC_Uchen.ttf", 9},
};

// For the last word on what was made after `unseen8` had been counted.
const std::vector<Face> kUnseen9 = {
    {"hadasimb", "HadasimCLM-Bold.ttf"},
    {"mejnuntal", "UKIJMejT.ttf"},
    {"njaun", "MyanmarNjaun.ttf"},
    {"kuttar", "MyanmarKuttar.ttf"},
    {"thuriya", "MyanmarThuriya.ttf"},
    {"barunpenb", "NanumBarunpenB.ttf"},
    {"euljiro", "BMEULJIROTTF.ttf"},
    {"courier10", "c0419bt_.pfb"},
    {"ipamincho", "ipam.ttf"},
    {"avdira", "Avdira_hint.ttf"},
    {"yozb", "YOzBSP.ttf"},
    {"dotcourier", "courier.ttf"},
    {"dotbatang", "UnBatang.ttf", 12},
    {"dotpauklay", "MyanmarPauklay.ttf", 9},
    {"dotyeonsung", "BMYEONSUNG_ttf.ttf", 9},
};

// For the last word on what was made after `unseen9` had been counted.
const std::vector<Face> kUnseen10 = {
    {"tagu", "MyanmarTagu.ttf"},
    {"sagar", "MyanmarSagar.ttf"},
    {"pyidaungsub", "Pyidaungsu-2.3_Bold.ttf"},
    {"tragic", "Tragic2.ttf"},
    {"washrab", "washrab.ttf"},
    {"alfios", "Alfios_R.otf"},
    {"emerita", "emerita_latina.ttf"},
    {"qolyazma", "UKIJQolyazma.ttf"},
    {"inichke", "UKIJInichke.ttf"},
    {"sreeramulu", "PottiSreeramulu.ttf"},
    {"tscucomic", "TSCu_Comic.ttf"},
    {"dotcrox", "crox2c_c.pcf.gz"},
    {"dotramabhadra", "ramabhadra.ttf", 12},
    {"doteunjin", "Eunjin.ttf", 9},
    {"dotbpgcourier", "BPG_Courier_GPL&GNU.ttf", 12},
};

std::unique_ptr<Typeface> opened(const Face& face) {
    const std::string file = face.file;
    if (file.empty()) return smallDotFace();
    if (face.rows > 0) return faceOfDots(file, face.rows);
    return file.ends_with(".jhf") ? faceOfStrokes(file) : faceFromFile(file);
}

void writePng(const GreyImage& image, const std::string& file) {
    png_image header;
    std::memset(&header, 0, sizeof header);
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.width());
    header.height = static_cast<png_uint_32>(image.height());
    header.format = PNG_FORMAT_GRAY;
    if (!png_image_write_to_file(&header, file.c_str(), 0, image.row(0).data(), 0, nullptr))
        throw std::runtime_error(file + ": " + header.message);
}

// A folder of images that is being written.
class Output {
  public:
    explicit Output(const std::string& folder) : folder_(folder) {
        std::filesystem::create_directories(folder);
        lines_.open(folder + "/lines.tsv");
        boxes_.open(folder + "/boxes.tsv");
        meta_.open(folder + "/meta.tsv");
        boxes_ << "file\tline\tindex\tchar\tx0\ty0\tx1\ty1\tbaseline\tcap\tfont\n";
        meta_ << "file\tfont\ttier\tpolarity\tlines\tnchars\tangle\ttags\n";
        if (!meta_) throw std::runtime_error("Cannot write to " + folder);
    }

    void add(const std::string& font, int number, const std::vector<std::string>& text,
             const Conditions& conditions, const Picture& picture) {
        char name[64];
        std::snprintf(name, sizeof name, "%s_%03d.png", font.c_str(), number);
        writePng(picture.image, folder_ + "/" + name);
        lines_ << name << '\t';
        for (std::size_t l = 0; l < text.size(); ++l) lines_ << (l ? "\\n" : "") << text[l];
        lines_ << '\n';
        for (const SeenCharacter& one : picture.characters)
            boxes_ << name << '\t' << one.printed.line << '\t' << one.printed.index << '\t'
                   << one.printed.character << '\t' << one.left << '\t' << one.top << '\t' << one.right
                   << '\t' << one.bottom << '\t' << one.baseline << '\t' << conditions.style.capHeight << '\t'
                   << font << '\n';
        std::string tags;
        for (const std::string& tag : conditions.view.tags) tags += (tags.empty() ? "" : ",") + tag;
        meta_ << name << '\t' << font << '\t' << conditions.tierName() << '\t'
              << (conditions.view.darkPrint ? "dark" : "light") << '\t' << text.size() << '\t'
              << picture.characters.size() << '\t' << conditions.view.angle << '\t'
              << (tags.empty() ? "-" : tags) << '\n';
    }

  private:
    std::string folder_;
    std::ofstream lines_, boxes_, meta_;
};

struct Set {
    const char* name;
    const std::vector<Face>& faces;
    std::uint32_t seed;
    bool unusual = false;  // whether some images have single characters or whole pages
};
const std::vector<Set> kSets = {{"develop", kDevelop, 100'003u},     {"held", kHeld, 900'001u},
                                {"fresh", kFresh, 1'300'021u},       {"unseen", kUnseen, 2'100'049u},
                                {"develop2", kDevelop2, 3'300'071u}, {"unseen2", kUnseen2, 4'700'021u},
                                {"unseen3", kUnseen3, 5'900'017u},   {"unseen4", kUnseen4, 7'300'033u},
                                {"unseen5", kUnseen5, 8'700'037u},   {"unseen6", kUnseen6, 10'100'039u},
                                {"unseen7", kUnseen7, 11'500'043u},  {"unseen8", kUnseen8, 12'900'047u},
                                {"unseen9", kUnseen9, 14'300'051u},  {"unseen10", kUnseen10, 15'700'057u},
                                {"learn", kLearn, 500'009u, true}};

struct Seeing {
    const char* name;
    Conditions (*conditions)(Random& random, bool dots);
    std::uint32_t seed;
    bool scenes = false;
};
const std::vector<Seeing> kSeeing = {{"usual", usualConditions, 31u},
                                     {"extreme", extremeConditions, 0u},
                                     {"scenes", sceneConditions, 67u, true}};

void generate(const Set& set, const Seeing& seeing, const std::string& folder, int linesEach,
              int charsetsEach) {
    Output lines(folder + "/lines"), charsets(folder + "/charsets");
    std::uint32_t seed = set.seed + seeing.seed;
    for (const Face& face : set.faces) {
        const std::unique_ptr<Typeface> typeface = opened(face);
        seed += 7919;
        for (int i = 0; i < linesEach + charsetsEach; ++i) {
            Random random(seed * 1000u + static_cast<std::uint32_t>(i));
            const bool charset = i >= linesEach;
            Conditions conditions = charset ? learningConditions(random, typeface->isDotMatrix())
                                            : seeing.conditions(random, typeface->isDotMatrix());
            std::vector<std::string> text = charset ? charsetText(random, random.whole(2, 4))
                                            : set.unusual && random.chance(0.2f) ? unusualText(random)
                                            : conditions.view.binary && !typeface->isDotMatrix()
                                                ? sheetText(random)
                                                : partText(random, conditions.lines);
            for (std::string& line : text)
                std::erase_if(line, [&](char c) { return c != ' ' && !typeface->has(c); });
            Print print = typeface->print(text, conditions.style, random);
            damage(print, conditions, random);
            if (seeing.scenes && !charset) print = withSurroundings(print, conditions.view.tags, random);
            (charset ? charsets : lines)
                .add(face.name, charset ? i - linesEach : i, text, conditions,
                     seen(print, conditions.view, random));
        }
    }
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    const std::string name = argc > 3 ? argv[1] : "", conditions = argc > 3 ? argv[2] : "";
    const auto set = std::find_if(dravik::kSets.begin(), dravik::kSets.end(),
                                  [&](const dravik::Set& one) { return name == one.name; });
    const auto seeing = std::find_if(dravik::kSeeing.begin(), dravik::kSeeing.end(),
                                     [&](const dravik::Seeing& one) { return conditions == one.name; });
    if (set == dravik::kSets.end() || seeing == dravik::kSeeing.end()) {
        std::fprintf(
            stderr,
            "usage: dravik_generate develop|develop2|held|fresh|unseen|unseen2|unseen3|unseen4|unseen5|"
            "unseen6|unseen7|unseen8|unseen9|unseen10|learn usual|extreme|scenes FOLDER [LINES_PER_FACE "
            "[CHARSETS_PER_FACE]]\n");
        return 2;
    }
    try {
        dravik::generate(*set, *seeing, argv[3], argc > 4 ? std::atoi(argv[4]) : 30,
                         argc > 5 ? std::atoi(argv[5]) : 12);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
