#!/usr/bin/env python3
"""Shows each effect's function beside ImageMagick's nearest operator on as many threads, as a ratio of times.

effect_pack.py EFFECT_PACK_BENCH [PICTURE]   by a picture, which is scaled to 4000 x 3000; without one by noise on a plasma
An operator's time is that of reading and applying without that of reading alone, medians of five.
"""

import json
import os
import statistics
import subprocess
import sys
import tempfile
import time

OPERATORS = {
    "Black and White": "-colorspace Gray",
    "Brightness and Contrast --contrast=30": "-brightness-contrast 0x30",
    "Despeckle": "-statistic Median 3x3",
    "Edges": "-edge 1",
    "Emboss": "-emboss 1",
    "Hue and Saturation --hue=40 --saturation=20": "-modulate 100,120,122",
    "Levels --darkest=20 --gamma=1.4": "-level 8%,100%,1.4",
    "Mosaic": "-scale 8.333% -scale 1200%",
    "Noise": "+noise Gaussian",
    "Posterize": "-posterize 4",
    "Rotate --turn=right": "-rotate 90",
    "Rotate --angle=17": "-rotate 17",
    "Rotate --angle=45": "-rotate 45",
    "Sepia": "-sepia-tone 80%",
    "Sharpen": "-unsharp 0x1.5+1+0",
    "Soften": "-gaussian-blur 0x2",
    "Soften (its quicker blur)": "-blur 0x2",
}


def seconds(command):
    times = []
    for _ in range(5):
        start = time.monotonic()
        subprocess.run(command, check=True)
        times.append(time.monotonic() - start)
    return statistics.median(times)


def main():
    words = subprocess.run([sys.argv[1], "--benchmark_format=json", "--benchmark_repetitions=5",
                            "--benchmark_report_aggregates_only=true"], check=True, capture_output=True).stdout
    ours = {entry["run_name"].removesuffix("/real_time"): entry["real_time"]
            for entry in json.loads(words)["benchmarks"] if entry["aggregate_name"] == "median"}
    with tempfile.TemporaryDirectory() as folder:
        picture = os.path.join(folder, "picture.mpc")
        source = [sys.argv[2], "-resize", "4000x3000!"] if len(sys.argv) > 2 else ["-size", "4000x3000", "plasma:"]
        subprocess.run(["convert", *source, "-type", "TrueColor", "-depth", "8", picture], check=True)
        convert = ["convert", "-limit", "thread", str(os.cpu_count()), picture]
        reading = seconds([*convert, "null:"])
        print(f"{'effect':46}{'ms':>8}  {'operator':30}{'ms':>8}{'ratio':>8}")
        for name, operator in OPERATORS.items():
            theirs = (seconds([*convert, *operator.split(), "null:"]) - reading) * 1000
            own = ours[name.split(" (")[0]]
            print(f"{name:46}{own:8.0f}  {operator:30}{theirs:8.0f}{own / theirs:8.2f}")


if __name__ == "__main__":
    main()
