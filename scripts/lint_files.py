"""clang-tidy over the project's own sources, one file per core, skipping files found clean before.

A file is known clean when clang-tidy passed it with the same preprocessed text (so its headers too),
the same compile command, the same .clang-tidy and the same clang-tidy version.
"""
import concurrent.futures
import hashlib
import json
import os
import re
import shlex
import subprocess
import sys

CHECKED = re.compile(r"^(src|tools|apps)/.*\.cpp$")


def cache_folder():
    base = os.environ.get("XDG_CACHE_HOME") or os.path.join(os.path.expanduser("~"), ".cache")
    folder = os.path.join(base, "norva", "clang-tidy")
    os.makedirs(folder, exist_ok=True)
    return folder


def arguments_of(entry):
    return entry["arguments"] if "arguments" in entry else shlex.split(entry["command"])


def preprocessed(entry):
    """The file's text after the preprocessor, with the compile command's own options."""
    args = arguments_of(entry)
    keep = []
    skip = False
    for arg in args:
        if skip:
            skip = False
            continue
        if arg == "-o":
            skip = True
            continue
        if arg in ("-c",) or arg.startswith("-fsanitize") or arg == "ccache":
            continue
        keep.append(arg)
    result = subprocess.run(keep + ["-E", "-P"], cwd=entry["directory"], capture_output=True)
    return result.stdout if result.returncode == 0 else None


def key_of(entry, root, salt):
    text = preprocessed(entry)
    if text is None:
        return None
    digest = hashlib.sha256(salt)
    # The compile command, with the clone's place taken out, so fresh clones share the record.
    digest.update(" ".join(arguments_of(entry)).replace(root, "").encode())
    digest.update(text.replace(root.encode(), b""))
    return digest.hexdigest()


def check(entry, root, build, salt, folder):
    path = entry["file"]
    key = key_of(entry, root, salt)
    if key and os.path.exists(os.path.join(folder, key)):
        return path, True, "", True
    result = subprocess.run(["clang-tidy", "--quiet", "-p", build, path],
                            capture_output=True, text=True)
    clean = result.returncode == 0 and "warning:" not in result.stdout and "error:" not in result.stdout
    if clean and key:
        open(os.path.join(folder, key), "w").close()
    return path, clean, result.stdout + result.stderr, False


def main():
    root, build = os.path.realpath(sys.argv[1]), os.path.realpath(sys.argv[2])
    with open(os.path.join(build, "compile_commands.json")) as commands:
        entries = [entry for entry in json.load(commands)
                   if CHECKED.search(os.path.relpath(entry["file"], root))]
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True).stdout
    with open(os.path.join(root, ".clang-tidy"), "rb") as config:
        salt = version + config.read()
    folder = cache_folder()
    # Each file once, even when several targets compile it.
    unique = {entry["file"]: entry for entry in entries}.values()
    failures, reused, log = [], 0, []
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count() or 2) as pool:
        for path, clean, output, cached in pool.map(
                lambda entry: check(entry, root, build, salt, folder), unique):
            reused += cached
            if not clean:
                failures.append(path)
                log.append(output)
    with open(os.path.join(build, "clang-tidy.log"), "w") as out:
        out.write("\n".join(log))
    if failures:
        findings = sorted({line for text in log for line in text.splitlines()
                           if "error:" in line or "warning:" in line})
        print("\n".join(findings), file=sys.stderr)
        print(f"clang-tidy found problems in {len(failures)} files "
              f"(full log: {build}/clang-tidy.log)", file=sys.stderr)
        return 1
    print(f"clang-tidy: clean ({len(unique)} files, {reused} known clean from before)")
    return 0


if __name__ == "__main__":
    sys.exit(main())
