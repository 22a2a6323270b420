# Writes the source OUTPUT, in which FUNCTION of NAMESPACE returns the bytes of the file INPUT:
# cmake -DINPUT=... -DOUTPUT=... -DHEADER=... -DNAMESPACE=... -DFUNCTION=... -P EmbedBytes.cmake
file(READ "${INPUT}" bytes HEX)
string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

namespace ${NAMESPACE} {
namespace {
constexpr std::uint8_t kBytes[] = {
${bytes}};
}  // namespace

std::span<const std::uint8_t> ${FUNCTION}() {
    return kBytes;
}

}  // namespace ${NAMESPACE}
")
