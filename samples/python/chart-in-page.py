#!/usr/bin/python3
"""chart-in-page.py OUTPUT.pdf NUMBER...

Draws a bar for each number as PostScript, and puts the chart into a page of a new PDF file. Needs
pikepdf (Debian's python3-pikepdf) and the library; the variable TQPUMPD2K may name its file.
"""
import sys

import pikepdf
from tqpumpd2k import IMAGE, Converter

WIDTH, HEIGHT = 400, 200


def chart(numbers):
    """The chart as PostScript, from the origin to WIDTH and HEIGHT."""
    step, highest = WIDTH / len(numbers), max(*numbers, 1)
    lines = ["/bar {moveto dup 0 exch rlineto exch 0 rlineto neg 0 exch rlineto closepath fill} def"]
    for i, number in enumerate(numbers):
        lines.append(f"{0.2 + 0.6 * i / len(numbers)} 0.4 0.6 setrgbcolor")
        lines.append(f"{step * 0.8} {HEIGHT * number / highest} {step * i} 0 bar")
    lines.append(f"0 setgray 1 setlinewidth 0 0 moveto {WIDTH} 0 lineto stroke")
    return "\n".join(lines).encode() + b"\n"


def as_stream(pdf, record):
    stream = pikepdf.Stream(pdf, record.data)
    for key, value in pikepdf.Object.parse(b"<<" + record.dictionary + b">>").items():
        stream[key] = value
    return stream


def form_of(pdf, content, objects):
    resources = pdf.make_indirect(pikepdf.Dictionary(XObject={}, Pattern={}))
    for record in objects:
        stream = as_stream(pdf, record)
        if record.kind != IMAGE:
            stream.Resources = resources
        resources["/XObject" if record.kind == IMAGE else "/Pattern"][record.name] = stream
    return pikepdf.Stream(
        pdf, content, Type=pikepdf.Name.XObject, Subtype=pikepdf.Name.Form,
        BBox=[0, 0, WIDTH, HEIGHT], Resources=resources,
    )


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    with Converter() as converter:
        content = converter.convert(chart([float(word) for word in sys.argv[2:]]))
        objects = converter.objects()
    with pikepdf.new() as pdf:
        page = pdf.add_blank_page(page_size=(595, 842))
        page.Resources = pikepdf.Dictionary(XObject={"/Chart": form_of(pdf, content, objects)})
        page.Contents = pikepdf.Stream(pdf, b"q 1 0 0 1 97 321 cm /Chart Do Q\n")
        pdf.save(sys.argv[1])


main()
