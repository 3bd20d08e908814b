"""Writes the list of what is in the archive for Windows, as SPDX 2.3 in JSON: each component's version and licence, and
the hash of its source where that is pinned. The same components give the same bytes.

    make_spdx.py VERSION PINNED OUTPUT    PINNED holds the pinned sources that were built, with their whole versions"""

import json
import subprocess
import sys
from collections import namedtuple
from email.utils import parsedate_to_datetime
from hashlib import sha256
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
Component = namedtuple("Component", "name licence text kind source")


def rows(path):
    return [line.split() for line in path.read_text().splitlines() if line and not line.startswith("#")]


def debian_version(package):
    return subprocess.run(["dpkg-query", "--show", "--showformat=${Version}", package], check=True,
                          stdout=subprocess.PIPE, text=True).stdout


def npm_version(package):
    lock = json.loads((ROOT / "viewer/package-lock.json").read_text())
    return lock["packages"][f"node_modules/{package}"]["version"]


def release_time():
    """The date of the newest entry of the changelog, so that it does not depend on when the archive is made."""
    changelog = (ROOT / "packaging/debian/changelog").read_text().splitlines()
    date = next(line for line in changelog if line.startswith(" -- ")).split(">  ")[1]
    return parsedate_to_datetime(date).strftime("%Y-%m-%dT%H:%M:%SZ")


def describe(component, built, hashes):
    find = {"source": built.__getitem__, "package": debian_version, "npm": npm_version}
    version = find[component.kind](component.source)
    namespace = "npm" if component.kind == "npm" else "deb/debian"
    package = {
        "name": component.name,
        "SPDXID": f"SPDXRef-{component.name}",
        "versionInfo": version,
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": component.licence.replace("_", " "),
        "licenseDeclared": component.licence.replace("_", " "),
        "licenseComments": f"licences/{component.text}",
        "copyrightText": "NOASSERTION",
        "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                          "referenceLocator": f"pkg:{namespace}/{component.source}@{version.replace('+', '%2B')}"}],
    }
    if component.source in hashes:
        package["checksums"] = [{"algorithm": "SHA256", "checksumValue": hashes[component.source]}]
    return package


def document(version, packages):
    own = {"name": "VELOxd", "SPDXID": "SPDXRef-VELOxd", "versionInfo": version, "downloadLocation": "NOASSERTION",
           "filesAnalyzed": False, "licenseConcluded": "MIT", "licenseDeclared": "MIT", "copyrightText": "NOASSERTION"}
    links = [{"spdxElementId": "SPDXRef-VELOxd", "relationshipType": "STATIC_LINK", "relatedSpdxElement": p["SPDXID"]}
             for p in packages]
    content = sha256(json.dumps([own, *packages]).encode()).hexdigest()
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"VELOxdDll-{version}-win64",
        "documentNamespace": f"urn:sha256:{content}",
        "creationInfo": {"created": release_time(), "creators": ["Organization: VELOxd"]},
        "packages": [own, *packages],
        "relationships": [{"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES",
                           "relatedSpdxElement": "SPDXRef-VELOxd"}, *links],
    }


def main(version, pinned, output):
    components = [Component(*row) for row in rows(HERE / "components.txt")]
    texts = {path.name for path in (ROOT / "packaging/licences").glob("*.txt")}
    if texts != {component.text for component in components}:
        sys.exit("make_spdx.py: packaging/licences/ and components.txt do not have the same licences")
    built = dict(rows(Path(pinned)))
    hashes = {row[0]: row[3] for row in rows(HERE / "sources.txt")}
    packages = [describe(component, built, hashes) for component in components]
    Path(output).write_text(json.dumps(document(version, packages), indent=2) + "\n")


main(*sys.argv[1:])
