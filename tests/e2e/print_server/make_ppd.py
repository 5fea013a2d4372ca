#!/usr/bin/env python3
"""Prints the description of a printer that takes PDF.

    make_ppd.py NAME MARGIN [custom] [filtered] PAPER=WIDTHxHEIGHT...     lengths in points

custom: takes paper of any size. filtered: the server's own filter lays the pages on the paper first, as
it does for most printers; without it the printer gets the document as it was sent.
"""

import sys


def choices(option, label, default, papers):
    yield f"*OpenUI *{option}/{label}: PickOne"
    yield f"*OrderDependency: 10 AnySetup *{option}"
    yield f"*Default{option}: {default}"
    for paper, (width, height) in papers.items():
        yield f'*{option} {paper}/{paper}: "<</PageSize[{width:g} {height:g}]>>setpagedevice"'
    yield f"*CloseUI: *{option}"


def description(name, margin, words, papers):
    default = next(iter(papers))
    yield '*PPD-Adobe: "4.3"'
    yield '*FormatVersion: "4.3"'
    yield '*FileVersion: "1.0"'
    yield "*LanguageVersion: English"
    yield "*LanguageEncoding: ISOLatin1"
    yield f'*PCFileName: "{name.upper()[:8]}.PPD"'
    yield '*Manufacturer: "Test"'
    yield f'*Product: "({name})"'
    yield f'*ModelName: "{name}"'
    yield f'*ShortNickName: "{name}"'
    yield f'*NickName: "{name}"'
    yield '*PSVersion: "(3010.000) 0"'
    yield '*LanguageLevel: "3"'
    yield "*ColorDevice: True"
    yield "*DefaultColorSpace: RGB"
    yield "*FileSystem: False"
    yield "*LandscapeOrientation: Plus90"
    yield "*TTRasterizer: Type42"
    takes = "vnd.cups-pdf application/pdf" if "filtered" in words else "pdf application/vnd.cups-pdf"
    yield f'*cupsFilter2: "application/{takes} 0 -"'
    yield '*cupsFilter2: "application/postscript application/postscript 0 -"'
    yield from choices("PageSize", "Paper", default, papers)
    yield from choices("PageRegion", "Paper", default, papers)
    yield f"*DefaultImageableArea: {default}"
    yield f"*DefaultPaperDimension: {default}"
    for paper, (width, height) in papers.items():
        area = f"{margin:g} {margin:g} {width - margin:g} {height - margin:g}"
        yield f'*ImageableArea {paper}/{paper}: "{area}"'
        yield f'*PaperDimension {paper}/{paper}: "{width:g} {height:g}"'
    if "custom" in words:
        yield "*VariablePaperSize: True"
        yield f"*HWMargins: {margin:g} {margin:g} {margin:g} {margin:g}"
        yield '*MaxMediaWidth: "1000"'
        yield '*MaxMediaHeight: "2000"'
        yield "*NonUIOrderDependency: 10 AnySetup *CustomPageSize"
        yield '*CustomPageSize True: "pop pop pop <</PageSize[5 -2 roll]>>setpagedevice"'
        yield "*ParamCustomPageSize Width: 1 points 72 1000"
        yield "*ParamCustomPageSize Height: 2 points 72 2000"
        yield "*ParamCustomPageSize WidthOffset: 3 points 0 0"
        yield "*ParamCustomPageSize HeightOffset: 4 points 0 0"
        yield "*ParamCustomPageSize Orientation: 5 int 0 0"
    # On both sides unless a job asks otherwise.
    yield "*OpenUI *Duplex/Two-Sided: PickOne"
    yield "*OrderDependency: 20 AnySetup *Duplex"
    yield "*DefaultDuplex: DuplexNoTumble"
    yield '*Duplex None/Off: "<</Duplex false>>setpagedevice"'
    yield '*Duplex DuplexNoTumble/Long Edge: "<</Duplex true>>setpagedevice"'
    yield "*CloseUI: *Duplex"
    # What only this printer's driver knows.
    yield "*OpenUI *Stock/Stock: PickOne"
    yield "*OrderDependency: 30 AnySetup *Stock"
    yield "*DefaultStock: Thin"
    yield '*Stock Thin/Thin stock: ""'
    yield '*Stock Thick/Thick stock: ""'
    yield "*CloseUI: *Stock"
    yield "*DefaultFont: Courier"


def main(arguments):
    name, margin = arguments[0], float(arguments[1])
    words = {argument for argument in arguments[2:] if "=" not in argument}
    papers = {}
    for argument in arguments[2:]:
        if argument in words:
            continue
        paper, size = argument.split("=")
        width, height = size.split("x")
        papers[paper] = (float(width), float(height))
    print("\n".join(description(name, margin, words, papers)))


if __name__ == "__main__":
    main(sys.argv[1:])
