"""Makes what the documents show: the reference, the pictures, and the results of the notebooks."""

from __future__ import annotations

import base64
import io
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).parents[1]
DOCUMENTS = ROOT / "docs" / "python"
PICTURES = {
    "python-topography": ("ForwardScan", "Topography", "parabola"),
    "python-curves": ("Spectroscopy", "Retract", None),
}

sys.path.append(str(ROOT / "python" / "tests"))

import matplotlib as mpl  # noqa: E402
import matplotlib.pyplot as plt  # noqa: E402
import nbformat  # noqa: E402
import numpy as np  # noqa: E402
import PIL.Image  # noqa: E402
import reference  # noqa: E402
from nbclient import NotebookClient  # noqa: E402
from tool import make_sample  # noqa: E402

import veloxd  # noqa: E402
from veloxd import curves  # noqa: E402

mpl.use("Agg")


def draw_pictures(sample: Path) -> None:
    """Draws what the pages plot."""
    for name, (group, channel, level) in PICTURES.items():
        with veloxd.open(sample) as file:
            axes = file[group][channel].plot(level=level)
            if file[group][channel].is_curves:
                axes.set(xlim=(200, 300), ylim=(-40, 40))
            drawn = io.BytesIO()
            axes.figure.savefig(drawn)
        (ROOT / "docs" / "images" / f"{name}.png").write_bytes(smaller(drawn.getvalue()))


def draw_force_curve(sample: Path) -> None:
    """Draws one force curve and marks what is derived from it. Values are in metres, what is drawn in nanometres."""
    with veloxd.open(sample) as file:
        approach, retract = file["Spectroscopy"].channels
        contact = curves.contact_point(approach, law="cone")
        adhesion, baseline = curves.adhesion(retract), curves.baseline(retract)
        x = approach.x.values
        signals = {channel.name: channel.values[0] for channel in (approach, retract)}
    slope = curves.slope(signals["Approach"], x=x, slope_range=(x.max() - 40e-9, x.max()))
    level = baseline.at(x)[0]
    touching, lowest = 1e9 * contact.position[0], 1e9 * adhesion.position[0]
    behind = x[x >= x.max() - 80e-9]
    _, axes = plt.subplots(figsize=(6.4, 4), layout="constrained")
    for name, signal in signals.items():
        axes.plot(1e9 * x, 1e9 * signal, label=name, linewidth=1)
    axes.plot(1e9 * x, 1e9 * level, "0.5", linestyle="--", linewidth=1, label="baseline")
    top = 1e9 * np.interp(adhesion.position[0], x, level)
    bottom = top - 1e9 * adhesion.value[0]
    axes.annotate("", (lowest, bottom), (lowest, top), arrowprops={"arrowstyle": "<->", "shrinkA": 0, "shrinkB": 0})
    axes.text(lowest - 2, (top + bottom) / 2, f"adhesion {1e9 * adhesion.force[0]:.2f} nN", ha="right", va="center")
    axes.plot(1e9 * behind, 1e9 * (slope.intercept + slope.value * behind), "k:", label=f"slope {slope.value:.3f}")
    axes.plot(touching, 1e9 * np.interp(contact.position[0], x, level), "ko", label=f"contact point {touching:.1f} nm")
    axes.set(xlim=(lowest - 60, 1e9 * x.max()), ylim=(bottom - 10, 95), xlabel="Z (nm)", ylabel="Deflection (nm)")
    axes.legend(frameon=False)
    drawn = io.BytesIO()
    axes.figure.savefig(drawn)
    (ROOT / "docs" / "images" / "force-curve.png").write_bytes(smaller(drawn.getvalue()))


def smaller(png: bytes) -> bytes:
    """The picture with a palette of 256 colours, which takes a third of the room."""
    picture = PIL.Image.open(io.BytesIO(png)).convert("RGB").quantize(256)
    packed = io.BytesIO()
    picture.save(packed, "png", optimize=True)
    return packed.getvalue()


def run_notebook(path: Path, folder: Path) -> None:
    """Runs a notebook and keeps its results, but nothing that differs from run to run."""
    notebook = nbformat.read(path, as_version=4)
    NotebookClient(notebook, resources={"metadata": {"path": str(folder)}}, record_timing=False).execute()
    notebook.metadata = nbformat.from_dict({"kernelspec": notebook.metadata["kernelspec"]})
    for number, cell in enumerate(notebook.cells):
        cell.id = str(number)
        cell.metadata = nbformat.from_dict({})
        for output in cell.get("outputs", []):
            png = output.get("data", {}).get("image/png")
            if png:
                output.data["image/png"] = base64.b64encode(smaller(base64.b64decode(png))).decode()
    nbformat.write(notebook, path)


if __name__ == "__main__":
    (DOCUMENTS / "reference.md").write_text(reference.page(), encoding="utf-8", newline="\n")
    with tempfile.TemporaryDirectory() as folder:
        make_sample(Path(folder) / "scan.oxd")
        draw_pictures(Path(folder) / "scan.oxd")
        draw_force_curve(Path(folder) / "scan.oxd")
        for notebook in sorted((DOCUMENTS / "notebooks").glob("*.ipynb")):
            run_notebook(notebook, Path(folder))
