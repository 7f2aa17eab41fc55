"""What script/run is told on its command line."""

import argparse
from pathlib import Path

from support import posing


def parse_arguments(description: str) -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        description=description, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--headless", action="store_true", help="no window: take a picture")
    parser.add_argument(
        "--resolution",
        type=parse_resolution,
        default=(1920, 1080),
        metavar="WxH",
        help="size of the setup screen (default: 1920x1080)",
    )
    parser.add_argument(
        "--board",
        type=Path,
        metavar="PATH",
        help="a board.yaml, a board.bin, or the folder that holds one",
    )
    parser.add_argument(
        "--host",
        type=Path,
        metavar="FILE.efi",
        help="a host of your own in place of the reference host; its log is shown here if it goes "
        "to the third serial port, at 0x3E8",
    )
    parser.add_argument("--language", metavar="CODE", help='the platform language, as in "de-DE"')
    parser.add_argument(
        "--outputs", type=int, choices=range(1, 5), default=1, help="graphics adapters (default: 1)"
    )
    parser.add_argument(
        "--pointer",
        choices=["mouse", "tablet", "none"],
        default="tablet",
        help="the USB pointing device (default: tablet)",
    )
    parser.add_argument(
        "--hover", metavar="NAME", help="picture the view with the pointer on this component"
    )
    parser.add_argument(
        "--filter", choices=posing.CATEGORIES, help="picture the view with this category chosen"
    )
    parser.add_argument(
        "--plug", action="store_true", help="plug a USB stick in and pull it out meanwhile"
    )
    parser.add_argument(
        "--accel",
        choices=["tcg", "kvm"],
        default="tcg",
        help="software emulation (default), or the processor's virtualisation",
    )
    parser.add_argument(
        "--setup",
        action="store_true",
        help="the firmware's setup: Device Manager, Boardscope setup, Board view",
    )
    parser.add_argument(
        "--gdb", action="store_true", help="the debug build, waiting for gdb to be connected"
    )
    build = parser.add_mutually_exclusive_group()
    for name, what in (("debug", "the build for gdb"), ("release", "the build to ship (default)")):
        build.add_argument(
            f"--{name}", dest="target", action="store_const", const=name.upper(), help=what
        )
    return parser.parse_args()


def parse_resolution(text: str) -> tuple[int, int]:
    width, _, height = text.lower().partition("x")
    if not (width.isdigit() and height.isdigit()):
        raise argparse.ArgumentTypeError(f'"{text}" is not a size; write it like 1920x1080')
    size = (int(width), int(height))
    if not (640 <= size[0] <= 3840 and 480 <= size[1] <= 2160):
        raise argparse.ArgumentTypeError(f"{text} is not between 640x480 and 3840x2160")
    return size
