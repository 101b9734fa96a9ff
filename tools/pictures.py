#!/usr/bin/env python3
"""Pictures of the program's windows, taken from the running program on a screen of its own.

    tools/pictures.py help BUILD            the guide's pictures, with the record of what they show
    tools/pictures.py sheets BUILD FOLDER   all windows on one sheet, for each theme and size

Needs xvfb, openbox, xdotool and imagemagick.
"""
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PICTURES = os.path.join(ROOT, "data", "help", "immagini")
WIDEST = 520  # pixels, of a picture in the guide: its page has room for them

# Window, keys that open it from the main window, keys back, the source that says what it shows.
WINDOWS = [
    ("frmMain", [], [], "src/workspace/main_view.cpp"),
    ("frmFiltro", ["alt+a", "f"], ["Escape"], "src/query/frmfiltro.cpp"),
    ("frmTrova", ["ctrl+f"], ["Escape"], "src/query/trova_view.cpp"),
    ("frmOrdina", ["alt+a", "o"], ["Escape"], "src/query/frmordina.cpp"),
    ("frmReport", ["alt+f", "s"], ["Escape"], "src/output/frmreport.cpp"),
    ("frmConfig", ["alt+f", "f"], ["Escape"], "src/archives/frmconfig.cpp"),
    ("frmCopieSicurezza", ["alt+f", "c"], ["Escape"], "src/archives/frmcopiesicurezza.cpp"),
    ("frmManArc", ["alt+f", "a"], ["Escape"], "src/archives/manarc_view.cpp"),
    ("frmSub", ["ctrl+a", "F9"], ["Escape"], "src/workspace/sub_view.cpp"),
    ("frmGuida", ["F1"], ["Escape"], "src/assist/guida_view.cpp"),
]


def texts_hash(source):
    """What a source shows are its texts: other changes of it leave a picture true."""
    with open(os.path.join(ROOT, source), encoding="utf-8") as file:
        lines = [line for line in file if not line.startswith("#include")]
    texts = re.findall(r'"((?:[^"\\]|\\.)*)"', "".join(lines))
    return hashlib.sha1("\n".join(texts).encode()).hexdigest()[:12]


class Desktop:
    """The program in a window manager, with a home folder that is thrown away."""

    def __init__(self, build, theme, scale, size):
        self.home = tempfile.mkdtemp()
        self.processes = []
        self.lay_down_settings(build, theme)
        reader, writer = os.pipe()
        self.start(["Xvfb", "-displayfd", str(writer), "-screen", "0", size + "x24",
                    "-nolisten", "tcp"], os.environ, pass_fds=(writer,))
        os.close(writer)
        display = ":" + os.read(reader, 16).decode().strip()
        self.env = dict(os.environ, DISPLAY=display, HOME=self.home, LANG="it_IT.UTF-8",
                        LC_ALL="it_IT.UTF-8", QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR=str(scale))
        for name in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "WAYLAND_DISPLAY"):
            self.env.pop(name, None)
        self.start(["openbox"], self.env)
        self.start([os.path.join(os.path.abspath(build), "tavolix")], self.env)
        self.main = self.wait_for_window(None)
        time.sleep(1)

    def lay_down_settings(self, build, theme):
        folder = os.path.join(self.home, ".local", "share", "tavolix")
        os.makedirs(folder)
        with open(os.path.join(build, "share", "tavolix", "tvx.ini"), encoding="utf-8") as file:
            settings = file.read()
        with open(os.path.join(folder, "tvx.ini"), "w", encoding="utf-8") as file:
            settings = re.sub("(?m)^SuggAvvio=.*$", "SuggAvvio=0", settings)
            file.write(re.sub("(?m)^Aspetto=.*$", "Aspetto=" + theme, settings))

    def start(self, command, env, **more):
        self.processes.append(subprocess.Popen(
            command, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **more))

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def xdotool(self, *arguments):
        done = subprocess.run(["xdotool", *arguments], env=self.env, capture_output=True,
                              text=True, check=False)
        return done.stdout.strip()

    def wait_for_window(self, former):
        """The active window, once it is another one than before."""
        for _ in range(100):
            active = self.xdotool("getactivewindow")
            if active and active != former:
                return active
            time.sleep(0.1)
        raise SystemExit("no window has come")

    def press(self, keys):
        for key in keys:
            self.xdotool("key", key)
            time.sleep(0.4)

    def picture(self, path):
        """Of the active window with its frame, when it has been painted."""
        time.sleep(0.6)
        window = self.xdotool("getactivewindow")
        subprocess.run(["import", "-window", window, path], env=self.env, check=True)


def take(build, theme, scale, size, folder):
    """Pictures of all windows; their paths by name."""
    paths = {}
    desktop = Desktop(build, theme, scale, size)
    try:
        for name, there, back, _ in WINDOWS:
            desktop.press(there)
            if there:
                desktop.wait_for_window(desktop.main)
            paths[name] = os.path.join(folder, name + ".png")
            desktop.picture(paths[name])
            desktop.press(back)
            desktop.main = desktop.xdotool("getactivewindow")
    finally:
        desktop.close()
    return paths


def take_help(build):
    os.makedirs(PICTURES, exist_ok=True)
    rows = ["Immagine\tSorgente\tTesti\n"]
    with tempfile.TemporaryDirectory() as folder:
        paths = take(build, "chiaro", 1, "1280x1024", folder)
        for name, _, _, source in WINDOWS:
            target = os.path.join(PICTURES, name + ".png")
            subprocess.run(["convert", paths[name], "-resize", f"{WIDEST}x>", "-strip", "+dither",
                            "-colors", "64", "png8:" + target], check=True)
            rows.append(f"{name}.png\t{source}\t{texts_hash(source)}\n")
    with open(os.path.join(PICTURES, "immagini.tsv"), "w", encoding="utf-8") as file:
        file.writelines(rows)


def take_sheets(build, target):
    os.makedirs(target, exist_ok=True)
    for theme in ("chiaro", "scuro"):
        for scale, size in ((1, "1280x1024"), (2, "2560x2048")):
            with tempfile.TemporaryDirectory() as folder:
                paths = take(build, theme, scale, size, folder)
                sheet = os.path.join(target, f"{theme}-{scale}00.png")
                subprocess.run(["montage", *paths.values(), "-label", "%t", "-tile", "4x",
                                "-geometry", "900x800>+12+12", sheet], check=True)
                print(sheet)


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "help":
        take_help(sys.argv[2])
    elif len(sys.argv) == 4 and sys.argv[1] == "sheets":
        take_sheets(sys.argv[2], sys.argv[3])
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
