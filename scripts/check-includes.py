"""Fails when a library source includes a header that the architecture does not allow it.

Two rules, both read from docs/architecture.md ("Which module may include which"):
- a module includes only its own headers and those of the modules its row names;
- a file includes only headers of its own layer or below (core < Devices/ < Gui/): core code knows
  nothing of devices or widgets, device code nothing of widgets.
"""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)
ROW = re.compile(r"^\|\s*`(\w+)`\s*\|([^|]*)\|", re.MULTILINE)
LAYERS = {"core": 0, "bus": 1, "gui": 2}
# Modules whose every file belongs to one layer, whatever its folder.
WHOLE_MODULE_LAYER = {"libraries": "bus", "Simulation": "bus", "OrbGraphics": "gui"}


def allowed_modules(architecture):
    section = architecture.split("## Which module may include which", 1)
    if len(section) < 2:
        sys.exit("docs/architecture.md has no section 'Which module may include which'")
    table = section[1].split("\n## ", 1)[0]
    return {module: set(re.findall(r"`(\w+)`", others)) for module, others in ROW.findall(table)}


def layer_of(module, parts):
    if module in WHOLE_MODULE_LAYER:
        return WHOLE_MODULE_LAYER[module]
    if "Gui" in parts:
        return "gui"
    if "Devices" in parts:
        return "bus"
    return "core"


def main():
    root = os.path.realpath(sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), ".."))
    src = os.path.join(root, "src")
    with open(os.path.join(root, "docs", "architecture.md"), encoding="utf-8") as doc:
        allowed = allowed_modules(doc.read())
    modules = {name for name in os.listdir(src) if os.path.isdir(os.path.join(src, name))}
    problems = [f"src/{name}: no row in docs/architecture.md" for name in sorted(modules - allowed.keys())]
    for folder, _, files in os.walk(src):
        for name in sorted(files):
            if not name.endswith((".h", ".cpp")):
                continue
            path = os.path.join(folder, name)
            relative = os.path.relpath(path, src).split(os.sep)
            module, own_layer = relative[0], layer_of(relative[0], relative[1:-1])
            with open(path, encoding="utf-8") as source:
                text = source.read()
            for included in INCLUDE.findall(text):
                parts = included.split("/")
                if parts[0] not in modules:
                    continue  # a system or Qt header, or one beside the file
                where = f"src/{'/'.join(relative)}: #include <{included}>"
                if parts[0] != module and parts[0] not in allowed.get(module, set()):
                    problems.append(f"{where}: {module} may not include {parts[0]}")
                elif LAYERS[layer_of(parts[0], parts[1:-1])] > LAYERS[own_layer]:
                    problems.append(f"{where}: a {own_layer} file may not include a "
                                    f"{layer_of(parts[0], parts[1:-1])} header")
    if problems:
        print("\n".join(problems), file=sys.stderr)
        print(f"module boundaries: {len(problems)} includes not allowed (docs/architecture.md)",
              file=sys.stderr)
        return 1
    print("module boundaries: every include is allowed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
