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
import nbformat  # noqa: E402
import PIL.Image  # noqa: E402
from nbclient import NotebookClient  # noqa: E402
from tool import make_sample  # noqa: E402

import reference  # noqa: E402
import veloxd  # noqa: E402

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
        for notebook in sorted((DOCUMENTS / "notebooks").glob("*.ipynb")):
            run_notebook(notebook, Path(folder))
