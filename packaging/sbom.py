#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""sbom.py FOLDER: prints what the Debian packages of FOLDER are made of and need, as SPDX 2.3 in JSON.

What was there at the build is told by the .buildinfo, what a package needs by itself. The same packages make the same
bytes.
"""
import hashlib
import json
import re
import subprocess
import sys
from datetime import timezone
from email.utils import parsedate_to_datetime
from pathlib import Path

IN_THEM = ("nlohmann-json3-dev", "libcli11-dev")  # headers alone: what is used of them is compiled in


def fields(*command):
    """Those of a Debian control paragraph."""
    text = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    return {name: re.sub(r"\n\s+", " ", value).strip()
            for name, value in re.findall(r"^([\w-]+):((?:.*\n)(?:[ \t].*\n)*)", text, re.MULTILINE)}


def spdx_id(name):
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)


def package(name, version, **more):
    return {"SPDXID": spdx_id(name), "name": name, "versionInfo": version, "downloadLocation": "NOASSERTION",
            "filesAnalyzed": False, "licenseDeclared": "NOASSERTION", "licenseConcluded": "NOASSERTION",
            "copyrightText": "NOASSERTION", **more}


def ours(file):
    """A package of this project, and the names of those that it needs."""
    told = fields("dpkg-deb", "--field", str(file))
    made = package(told["Package"], told["Version"], packageFileName=file.name, licenseDeclared="Apache-2.0",
                   licenseConcluded="Apache-2.0", copyrightText="2026 The bgpdt authors",
                   supplier="Organization: The bgpdt authors",
                   checksums=[{"algorithm": "SHA256", "checksumValue": hashlib.sha256(file.read_bytes()).hexdigest()}])
    return made, [re.split(r"[ :(|]", need.strip())[0] for need in told.get("Depends", "").split(",") if need.strip()]


def relation(one, kind, other):
    return {"spdxElementId": spdx_id(one), "relationshipType": kind, "relatedSpdxElement": spdx_id(other)}


def document(folder):
    info = fields("cat", *map(str, folder.glob("*.buildinfo")))
    there = dict(re.findall(r"(\S+) \(= ([^)]+)\)", info["Installed-Build-Depends"]))
    made = [ours(file) for file in sorted(folder.glob("*.deb")) if "-dbgsym_" not in file.name]
    own = {one["name"] for one, _ in made}
    relations, others = [], set(IN_THEM)
    for one, needs in made:
        relations.append(relation("DOCUMENT", "DESCRIBES", one["name"]))
        relations += [relation(one["name"], "DEPENDS_ON", need) for need in needs]
        others |= set(needs) - own
    relations += [relation("bgpdt", "STATIC_LINK", name) for name in IN_THEM]
    relations += [relation("libbgpdt1", "STATIC_LINK", "nlohmann-json3-dev")]
    when = parsedate_to_datetime(fields("cat", *map(str, folder.glob("*.changes")))["Date"]).astimezone(timezone.utc)
    name = f"bgpdt-{info['Version']}-{info['Architecture']}"
    content = [one for one, _ in made] + [package(other, there.get(other, "NOASSERTION")) for other in sorted(others)]
    identity = hashlib.sha256(json.dumps([content, relations]).encode()).hexdigest()
    return {"spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT", "name": name,
            "documentNamespace": f"urn:spdx:{name}:{identity}",
            "creationInfo": {"created": f"{when:%Y-%m-%dT%H:%M:%SZ}", "creators": ["Organization: The bgpdt authors"]},
            "packages": content, "relationships": relations}


print(json.dumps(document(Path(sys.argv[1])), indent=2))
