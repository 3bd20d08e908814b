"""Draws the topography of a sample file by the lines that documents begin with, and checks what the picture says:

    labelled_picture.py FILE PICTURE"""

import sys

import matplotlib

matplotlib.use("Agg")

import veloxd

path, picture = sys.argv[1:]
with veloxd.open(path) as file:
    axes = file["ForwardScan"]["Topography"].plot(level="line")

figure = axes.figure
figure.savefig(picture)
signal = figure.axes[-1].get_ylabel()  # of the colour bar
labels = {axes.get_title(): "line", axes.get_xlabel(): "µm", axes.get_ylabel(): "µm", signal: "nm"}
print("; ".join(labels))
for label, part in labels.items():
    assert part in label, f"{part!r} is not in {label!r}"
assert "Topography" in signal
assert axes.images[0].get_array().std() > 0
