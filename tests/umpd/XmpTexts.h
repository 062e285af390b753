// The parts of an XMP packet that are always the same.
#pragma once

#include <string>

namespace umpd {

inline const std::string head = R"(<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>
<x:xmpmeta xmlns:x='adobe:ns:meta/'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' )"
                                R"(xmlns:iX='http://ns.adobe.com/iX/1.0/'>
)";
inline const std::string pdf =
    "<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n";
inline const std::string xap =
    "<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n";
inline const std::string dates = R"(xap:ModifyDate='2006-01-02T15:04:05Z'
xap:CreateDate='2006-01-02T15:04:05Z'
/>
)";
inline const std::string tail =
    R"(<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id.html'
pdfaid:part='1'
pdfaid:conformance='B'
/>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end='w'?>
)";

}  // namespace umpd
