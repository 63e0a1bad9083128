"""Documents such as a field agent has, and the comparison of what came back with what was there."""

import hashlib
import random
from pathlib import Path


def write_samples(documents):
    """Fills the documents folder; the same bytes each time."""
    generator = random.Random(20030714)
    documents.mkdir(parents=True, exist_ok=True)
    files = {
        "Budget 2003.csv": "\r\n".join(f"Agence {row};{row * 317 % 9973},{row % 100:02d}" for row in range(400)).encode(),
        "Présentation d'été.txt": "Le règlement de la succursale de Québec, ci-joint.\r\n".encode("cp1252") * 60,
        "vide.txt": b"",
        "Photos/bureau.bmp": generator.randbytes(90_000),
        "Photos/équipe réunie.bmp": generator.randbytes(120_000),
        "Lettres/Clients/Mme Tremblay, contrat.doc": generator.randbytes(30_000),
        "Lettres/Clients/M. Bélanger.doc": generator.randbytes(24_000),
        "Lettres/.brouillon": b"\xff\xfe\x00brouillon",
    }
    for name, content in files.items():
        path = documents / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
    (documents / "Lettres" / "À classer").mkdir(exist_ok=True)


def snapshot(folder):
    """Relative path to content for everything below a folder: a file's size and digest, or None for a folder."""
    found = {}
    for path in sorted(Path(folder).rglob("*")):
        found[str(path.relative_to(folder))] = None if path.is_dir() else digest(path)
    return found


def digest(path):
    with open(path, "rb") as stream:
        return path.stat().st_size, hashlib.file_digest(stream, "sha256").hexdigest()


def differences(before, after):
    """One line for each thing that is missing, new or other than before."""
    lines = [f"missing: {name}" for name in before if name not in after]
    lines += [f"new: {name}" for name in after if name not in before]
    lines += [f"differs: {name} {before[name]} {after[name]}" for name in before
              if name in after and before[name] != after[name]]
    return lines
