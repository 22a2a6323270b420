#include "base/OutputFile.h"

#include <cerrno>

namespace dravik {

OutputFile::OutputFile(const std::string& file, Start start)
    : file_(openFile(file, start == Start::AtEnd ? OpenFor::Appending : OpenFor::Writing)) {
    if (!file_) throw Failure(numberOfErrno(errno));
}

void OutputFile::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size())
        throw Failure(numberOfErrno(errno));
}

void OutputFile::close() {
    if (std::fclose(file_.release()) != 0) throw Failure(numberOfErrno(errno));
}

}  // namespace dravik
