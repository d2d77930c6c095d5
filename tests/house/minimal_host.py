"""The minimal host with texts changed: hosts that go wrong in one way, for the tests of what watches a host."""

import os
import subprocess

import house


def built(target, changes=(), without=(), options=()):
    """Links the host's parts, without some of them, into `target`. Each change is (was, becomes), and what was stands once
    in the whole host. Parts that nothing changes are those of the build."""
    folder = target.with_name(target.name + "-sources")
    folder.mkdir()
    source = house.source_root() / "examples" / "minimal-host"
    compiled = house.build_root() / "CMakeFiles" / "example_minimal_host.dir" / "examples" / "minimal-host"
    texts = {path.name: house.text_of(path) for path in source.iterdir() if path.suffix in house.SOURCE_SUFFIXES}
    changed = set()
    for was, becomes in changes:
        places = [name for name in texts for _ in range(texts[name].count(was))]
        assert len(places) == 1, f"{was} is there {len(places)} times"
        texts[places[0]] = texts[places[0]].replace(was, becomes)
        changed.add(places[0])
    for name, text in texts.items():
        (folder / name).write_text(text, encoding="utf-8")
    parts = sorted(name for name in texts if name.endswith(".cpp") and name not in without)
    is_all_changed = any(name.endswith(".h") for name in changed)
    files = [folder / name if is_all_changed or name in changed else compiled / f"{name}.o" for name in parts]
    subprocess.run([os.environ.get("VELT_CXX", "g++"), "-std=c++20", "-fPIC", f"-I{house.source_root()}", *files, "-o", target,
                    *options], check=True)
    return target
