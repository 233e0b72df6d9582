#!/usr/bin/env python3
"""Writes the seeds of the fuzzers: modes that presses run, and the edges of what can be built.

usage: tests/fuzz/make_seeds.py    (writes into corpus/ beside this file)

Inputs that the fuzzers found are in the same folders, named by their checksum.
"""
import json
import pathlib
import struct
import zlib

CORPUS = pathlib.Path(__file__).parent / "corpus"

FIELDS = ("nozzleCount basePass xResPass yResPass colorCount bitsPerPixel featherMode featherPercent "
          "featherNozzleType colorTimes featherLevelPercent resSplitType").split()
PLAIN = dict(zip(FIELDS, (96, 2, 1, 1, 1, 1, 0, 50.0, 1, 1, 100, 0)))
MOST, LEAST = 2**31 - 1, -2**31

RECORDS = {
    "sample_544_rows": dict(nozzleCount=544, basePass=1),
    "production_544_rows": dict(nozzleCount=544, basePass=4, colorCount=4),
    "hard": {},
    "hard_printed_twice": dict(nozzleCount=100, basePass=5, colorTimes=2),
    "hard_odd_rows_become_smooth_2": dict(nozzleCount=100, basePass=3),
    "hard_rows_unused": dict(nozzleCount=50, basePass=5, xResPass=4, yResPass=2),
    "hard_one_row": dict(nozzleCount=1, basePass=1),
    "hard_with_sine": dict(featherNozzleType=3, nozzleCount=90),
    "smooth_2": dict(featherMode=1, nozzleCount=120, basePass=4),
    "smooth_2_printed_twice": dict(featherMode=1, nozzleCount=120, basePass=4, colorTimes=2),
    "smooth_2_without_feather_rows": dict(featherMode=1, nozzleCount=120, basePass=4, featherPercent=0.0),
    "smooth_2_all_feather": dict(featherMode=1, nozzleCount=20, basePass=1, featherPercent=100.0),
    "smooth_3": dict(featherMode=1, featherNozzleType=2, nozzleCount=120, basePass=4),
    "smooth_3_half_level": dict(featherMode=1, featherNozzleType=2, featherLevelPercent=50),
    "smooth_3_level_0": dict(featherMode=1, featherNozzleType=2, featherLevelPercent=0),
    "smooth_3_printed_thrice": dict(featherMode=1, featherNozzleType=2, basePass=4, colorTimes=3),
    "smooth_3_sine": dict(featherMode=1, featherNozzleType=3, nozzleCount=132, basePass=1, featherPercent=12.5),
    "smooth_3_sine_2_by_2": dict(featherMode=1, featherNozzleType=3, xResPass=2, yResPass=2, basePass=1),
    "two_bits": dict(bitsPerPixel=2, xResPass=3),
    "nine_x_passes": dict(nozzleCount=18, basePass=1, xResPass=9),
    "nine_x_passes_two_bits": dict(nozzleCount=18, basePass=1, xResPass=9, bitsPerPixel=2),
    "seventeen_x_passes": dict(nozzleCount=17, basePass=1, xResPass=17),
    "nine_x_passes_sine": dict(featherMode=1, featherNozzleType=3, nozzleCount=36, featherPercent=66.6, basePass=1, xResPass=9),
    "three_colours": dict(colorCount=3, nozzleCount=68),
    "split_x2": dict(resSplitType=1, xResPass=4),
    "split_y3": dict(resSplitType=3, yResPass=3),
    "split_y4_with_rest": dict(resSplitType=4, yResPass=7),
    "split_x2y2": dict(resSplitType=5, xResPass=4, yResPass=2),
    "split_unknown": dict(resSplitType=6),
    "step_without_good_height": dict(nozzleCount=26, basePass=2),
    "refused_color_times_0": dict(colorTimes=0),
    "refused_color_times_above_passes": dict(colorTimes=3),
    "refused_split_leaves_no_pass": dict(resSplitType=3, yResPass=2),
    "refused_feather_mode": dict(featherMode=2),
    "refused_reserved_profile": dict(featherMode=1, featherNozzleType=4),
    "refused_bits": dict(bitsPerPixel=3),
    "refused_not_a_number": dict(featherMode=1, featherPercent=float("nan")),
    "refused_infinite": dict(featherMode=1, featherPercent=float("-inf")),
    "refused_too_few_rows": dict(nozzleCount=5, basePass=6),
    "too_large_rows": dict(nozzleCount=MOST, basePass=1),
    "too_large_passes": dict(nozzleCount=MOST, basePass=MOST, colorTimes=MOST),
    "too_large_columns": dict(xResPass=MOST),
    "too_large_lines": dict(nozzleCount=MOST, yResPass=MOST),
    "too_large_colours": dict(colorCount=MOST),
    "too_large_repeat": dict(nozzleCount=15790321, basePass=1),
    "all_least": {name: LEAST for name in FIELDS if name != "featherPercent"},
    "all_most": {name: MOST for name in FIELDS if name != "featherPercent"},
}

# builder, rows, step, passes, times, level in percent, count
CUT_TABLES = {
    "hard_four_passes": (0, 0, 10, 4, 1, 100, 40),
    "hard_negative_count": (0, 0, 1, 64, 1, 100, -1),
    "hard_twice_five_passes": (1, 0, 2, 5, 2, 100, 0),
    "hard_more_times_than_passes": (1, 0, 3, 3, 5, 100, 0),
    "smooth_2_fifths": (2, 2, 3, 2, 1, 100, 0),
    "smooth_2_without_feather": (2, 0, 4, 5, 2, 100, 0),
    "smooth_2_all_feather": (2, 8, 8, 4, 4, 100, 0),
    "smooth_3_fifths": (3, 6, 2, 0, 0, 100, 0),
    "smooth_3_shorter_than_step": (3, 5, 9, 0, 0, 100, 0),
    "smooth_3_level_1": (3, 540, 85, 0, 0, 1, 0),
    "zones_80_rows": (4, 80, 30, 0, 0, 100, 0),
    "zones_one_row_left": (4, 31, 10, 0, 0, 100, 0),
    "zones_deep": (4, 377, 144, 0, 0, 100, 0),
    "groups_twice": (5, 2, 2, 4, 2, 100, 0),
    "groups_more_times_than_passes": (5, 0, 5, 2, 4, 33, 0),
    "widened_twice": (6, 6, 2, 0, 2, 100, 0),
    "widened_middle": (6, 11, 2, 0, 3, 100, 0),
    "widened_whole": (6, 40, 20, 0, 64, 100, 0),
}

# columns, plane rows, width, rows, X passes, Y passes, bits, offset X, offset Y, padding, seed
KERNELS = {
    "one_pixel": (1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 1),
    "one_pass": (64, 8, 64, 4, 1, 1, 1, 0, 0, 0, 2),
    "two_passes": (64, 8, 64, 4, 2, 2, 1, 0, 0, 0, 3),
    "three_passes_two_bits": (50, 8, 50, 3, 3, 1, 2, 0, 0, 0, 4),
    "four_passes": (33, 5, 33, 2, 4, 4, 1, 7, 3, 0, 5),
    "eight_passes": (72, 4, 72, 2, 8, 1, 1, 0, 0, 0, 6),
    "eight_passes_two_bits": (72, 4, 72, 2, 8, 1, 2, 0, 0, 0, 7),
    "nine_passes": (60, 4, 60, 2, 9, 1, 1, 0, 0, 0, 8),
    "nine_passes_two_bits": (60, 4, 60, 2, 9, 3, 2, 0, 0, 1, 9),
    "forty_passes": (41, 3, 41, 2, 40, 1, 1, 5, 2, 3, 10),
    "narrow_plane_wide_pass": (3, 2, 130, 2, 5, 1, 1, 2, 1, 0, 11),
    "plane_of_one_column": (1, 12, 130, 6, 11, 1, 2, 299, 40, 9, 12),
    "wide_plane_narrow_pass": (130, 12, 1, 6, 7, 2, 2, 150, 39, 2, 13),
    "byte_and_a_bit": (9, 1, 9, 1, 13, 1, 1, 0, 0, 0, 14),
}

# The high digit is the call, the low one the mode: 0 to 6 init, 7 to c apply, d and e factory, f another storage.
STORAGE = {
    "one_init": "00",
    "six_inits_evict_the_first": "00 01 02 03 04 05 00",
    "rejected_clears_current": "00 0a 70 00",
    "apply_same_step": "00 71 72 73",
    "apply_other_step": "00 77 78",
    "apply_evicts_up_to_current": "00 71 72 73 74 75 76",
    "init_again_refreshes": "00 01 02 03 04 00 05 06",
    "factory_between": "00 d1 ea d7 71",
    "another_storage": "00 01 f0 71 02 72",
}

MODE_FILES = {
    "empty_object": "{}",
    "all_numbers": json.dumps(dict(zip(FIELDS, (544, 4, 2, 3, 4, 2, 1, 33.3, 3, 2, 66, 5)))),
    "names": '{"featherMode": "nozzle", "featherNozzleType": "smooth-3-sine", "resSplitType": "x2y2"}',
    "percent_negative_zero": '{"featherPercent": -0.0}',
    "percent_tiny": '{"featherPercent": 1e-320}',
    "percent_top": '{"featherPercent": 1e2}',
    "largest_count": '{"nozzleCount": 2147483647, "basePass": 2147483647}',
    "escaped_name": '{"base\\u0050ass": 4}',
    "refused_unknown_field": '{"basepass": 4}',
    "refused_line_end_in_name": '{"a\\nb": 4}',
    "refused_twice": '{"basePass": 4, "basePass": 4}',
    "refused_type": '{"basePass": [{}, null, true, "x"]}',
    "refused_fraction": '{"basePass": 4.0}',
    "refused_range": '{"colorCount": 18446744073709551616}',
    "refused_just_above": '{"featherPercent": 100.5}',
    "refused_overflow": '{"featherPercent": 1e400}',
    "refused_list": "[1, 2]",
    "refused_cut_off": '{"basePass": ',
    "refused_two_objects": "{} {}",
    "refused_bytes": b"\xff\xfe{\x00}\x00",
    "byte_order_mark": b'\xef\xbb\xbf{"basePass": 2}',
}

# mask.json of a result: a small one, and changes of it.
RESULT = {
    "input": PLAIN,
    "warnings": ["a warning"],
    "geometry": dict(colorCount=1, positionCount=12, MaskHeight_IncludeRes=96, MaskWidth=544,
                     MaskLineBytes_OneColor=68, BitsPerPixel=1),
    "files": [dict(name="mask.bin", bytes=78336, crc32="0123abcd"),
              dict(name="mask_c0_p0.png", bytes=5, crc32="00000000")],
}
RESULTS = {
    "whole": {},
    "two_bits": {"geometry": {**RESULT["geometry"], "BitsPerPixel": 2, "MaskWidth": 272}},
    "no_files": {"files": []},
    "refused_folder": {"files": [dict(name="../mask.bin", bytes=1, crc32="00000000")]},
    "refused_checksum": {"files": [dict(name="mask.bin", bytes=1, crc32="+1234567")]},
    "refused_bytes": {"files": [dict(name="mask.bin", bytes=-1, crc32="00000000")]},
    "refused_too_wide": {"geometry": {**RESULT["geometry"], "MaskWidth": 545}},
    "refused_too_many": {"geometry": {**RESULT["geometry"], "colorCount": MOST, "positionCount": MOST,
                                      "MaskHeight_IncludeRes": MOST}},
    "refused_mode": {"input": {"basePass": 0}},
    "refused_list": {"geometry": []},
    "refused_warning": {"warnings": [["nested"]]},
}


def png(width, height, bits, colour, rows, *chunks, interlaced=0):
    """A PNG file; rows are the filtered bytes before they are packed, chunks come before them."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    header = struct.pack(">IIBBBBB", width, height, bits, colour, 0, 0, interlaced)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + b"".join(chunk(*one) for one in chunks)
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


PALETTE = (b"PLTE", bytes(range(12)))
PICTURES = {
    "bits_1": png(9, 2, 1, 0, b"\x00\xaa\x80" * 2),
    "grey": png(3, 2, 8, 0, b"\x00\x00\x80\xff" * 2),
    "grey_16_bits": png(2, 1, 16, 0, b"\x00\x12\x34\xab\xcd"),
    "colour": png(2, 2, 8, 2, b"\x00\xff\x00\x00\x00\xff\x00" * 2),
    "colour_transparent": png(2, 1, 8, 6, b"\x00\xff\x00\x00\x80\x00\xff\x00\x00"),
    "palette": png(4, 1, 2, 3, b"\x00\x1b", PALETTE),
    "palette_transparent": png(4, 1, 2, 3, b"\x00\x1b", PALETTE, (b"tRNS", b"\x00\x80")),
    "gamma": png(1, 1, 8, 0, b"\x00\x80", (b"gAMA", struct.pack(">I", 100000))),
    "interlaced": png(2, 2, 8, 0, b"\x00\x01\x00\x02\x00\x03\x04", interlaced=1),
    "refused_empty": b"",
    "refused_cut_off": png(3, 2, 8, 0, b"\x00\x00\x80\xff" * 2)[:45],
    "refused_rows_missing": png(3, 9, 8, 0, b"\x00\x00\x80\xff"),
    "refused_promises_much": png(11000, 11000, 1, 0, b"\x00"),
    "refused_palette_missing": png(4, 1, 2, 3, b"\x00\x1b"),
}


def write(fuzzer, name, data):
    folder = CORPUS / fuzzer
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(data)


for name, changes in RECORDS.items():
    record = {**PLAIN, **changes}
    for fuzzer in ("fuzz_record", "fuzz_geometry"):
        write(fuzzer, name, struct.pack("<7if4i", *(record[field] for field in FIELDS)))
for name, numbers in CUT_TABLES.items():
    write("fuzz_cuttable", name, struct.pack("<7i", *numbers))
for name, numbers in KERNELS.items():
    write("fuzz_kernels", name, struct.pack("<11i", *numbers))
for name, calls in STORAGE.items():
    write("fuzz_storage", name, bytes.fromhex(calls))
for name, text in MODE_FILES.items():
    write("fuzz_param_file", name, text if isinstance(text, bytes) else text.encode())
for name, data in PICTURES.items():
    write("fuzz_picture", name, data)
for name, changes in RESULTS.items():
    write("fuzz_mask_json", name, json.dumps({**RESULT, **changes}).encode())
