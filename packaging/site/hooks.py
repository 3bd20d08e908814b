"""What the documents have for readers of the repository, as a site on a disk has it."""

import re
import shutil
from pathlib import Path

LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s]+)\)")

# Search runs in a worker, which browsers refuse to pages on a disk: this stands in for one. The theme would fetch it.
WORKER = re.compile(r"https://[^\"']*iframe-worker/shim")
OWN_WORKER = "assets/javascripts/iframe-worker.js"


def on_page_markdown(markdown, page, config, files):
    """A link to a folder has no page to lead to: it becomes its text."""
    folder = (Path(config["docs_dir"]) / page.file.src_uri).parent

    def replaced(link):
        target = link[3].split("#")[0]
        return link[2] if target and "://" not in target and (folder / target).is_dir() else link[0]

    return LINK.sub(replaced, markdown)


def on_post_page(output, page, config):
    depth = page.file.dest_uri.count("/")
    return WORKER.sub("../" * depth + OWN_WORKER, output)


def on_post_build(config):
    site = Path(config["site_dir"])
    shutil.copy(Path(config["config_file_path"]).parent / "iframe-worker.js", site / OWN_WORKER)
    for name in ("404.html", "sitemap.xml", "sitemap.xml.gz"):  # are for servers
        (site / name).unlink(missing_ok=True)
