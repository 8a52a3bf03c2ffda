// The bytes of a file for the parser: the file itself and nothing else, whatever its name looks like.
#pragma once

#include <xercesc/sax/InputSource.hpp>

#include "framework/String.h"

namespace obmgr {

// The name under which the file can be opened: the path as it stands when there is such a file, else with each "\"
// turned into "/".
CString SystemPath(const CString& path);

// Reads the file from its first byte, or from behind a mark that the encoding told of does not go with:
// - The mark FF FE and EUC-KR declared is what a save on a Korean system leaves. When UTF-16 text follows it, the
//   declaration is overruled, when plain bytes follow it, they are read without the mark.
// - Where EUC-KR is declared the extended table is used, which reads the plain one, too.
// A path is never taken for an address on a network, and only an ordinary file is opened.
class PipeFileSource : public xercesc::InputSource {
public:
    explicit PipeFileSource(const CString& path);
    ~PipeFileSource() override;

    // Null when the file cannot be opened.
    xercesc::BinInputStream* makeStream() const override;

private:
    void Sniff();

    int m_descriptor;
    unsigned m_start = 0;
};

} // namespace obmgr
