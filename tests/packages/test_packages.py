"""What is installed and packaged, and that builds can be repeated."""

import re
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

TREE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / "tests/support"))

from world import World  # noqa: E402

HANDLER = "camera_remote.cgi"
GET_SYSTEM_INFO = '{"Request":{"Command":"GetSystemInfo"}}'


def run(*command, **options):
    """Runs a command that has to succeed, and returns its output."""
    result = subprocess.run(
        [str(word) for word in command], capture_output=True, text=True, check=False, **options
    )
    assert result.returncode == 0, result.stdout + result.stderr
    return result.stdout


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def project_version():
    text = (TREE / "CMakeLists.txt").read_text()
    return re.search(r"project\(camera_remote VERSION ([0-9.]+)", text).group(1)


def copy_sources(folder):
    """A copy of the sources as a tarball has them: without git and build trees."""
    shutil.copytree(TREE, folder, ignore=shutil.ignore_patterns(".git", "build", "node_modules"))
    debian_armhf = TREE / "build/debian-armhf"
    (folder / "build").mkdir()
    (folder / "build/debian-armhf").symlink_to(debian_armhf)
    return folder


def build(folder, preset, *options):
    run("cmake", "--preset", preset, *options, cwd=folder)
    run("cmake", "--build", "--preset", preset, "--parallel", "2", "--target", HANDLER, cwd=folder)
    return folder / "build" / preset


@pytest.fixture(name="installed", params=["release", "arm-small"])
def fixture_installed(request, tmp_path):
    """An empty root into which the component runtime of a preset is installed."""
    run("cmake", "--install", TREE / "build" / request.param, "--prefix", "/usr",
        "--component", "runtime", env={"PATH": "/usr/bin:/bin", "DESTDIR": str(tmp_path)})
    return tmp_path


def test_the_runtime_component_is_the_stripped_handler_and_nothing_else(installed):
    assert files_below(installed) == {"usr/lib/cgi-bin/" + HANDLER}
    handler = installed / "usr/lib/cgi-bin" / HANDLER
    assert handler.stat().st_mode & 0o7777 == 0o755
    assert ", stripped" in run("file", handler)


def test_an_installed_handler_tells_its_version(installed):
    handler = installed / "usr/lib/cgi-bin" / HANDLER
    version = run("grep", "-ao", "camera_remote.cgi version [0-9.]*", handler)
    assert version == f"camera_remote.cgi version {project_version()}\n"


def test_the_changelog_begins_with_the_version():
    versions = re.findall(r"^## \[([0-9.]+)\] - \d{4}-\d\d-\d\d$",
                          (TREE / "CHANGELOG.md").read_text(), re.MULTILINE)
    assert versions[0] == project_version()


def test_the_web_component_is_the_page_and_the_description_that_it_reads(tmp_path):
    run("cmake", "--install", TREE / "build/release", "--prefix", tmp_path, "--component", "web")
    page = {"share/camera-remote/web/" + name for name in files_below(TREE / "web")}
    assert files_below(tmp_path) == page | {"share/camera-remote/web/api/openapi.json"}


@pytest.mark.parametrize("component, page", [
    ("doc", "man8/camera_remote.cgi.8"),
    ("simulator", "man1/camera-simulator.1"),
])
def test_a_manual_page_has_no_mistakes(component, page, tmp_path):
    run("cmake", "--install", TREE / "build/release", "--prefix", tmp_path, "--component", component)
    result = subprocess.run(["man", "--local-file", "--warnings", tmp_path / "share/man" / page],
                            capture_output=True, text=True, check=True)
    assert result.stderr == ""
    assert f"camera_remote {project_version()}" in result.stdout


def test_an_installed_simulated_camera_runs(tmp_path):
    run("cmake", "--install", TREE / "build/release", "--prefix", tmp_path,
        "--component", "simulator")
    with World(program=tmp_path / "bin/camera-simulator") as world:
        status, _, page = world.request("GET", "/")
        assert (status, page) == (200, (TREE / "web/index.html").read_bytes())
        data = world.command("GetSystemInfo")["Response"]["Data"]
        assert data["Model"] == "RV130"


def test_the_manual_page_of_the_simulated_camera_names_every_option():
    usage = run(TREE / "run", "--help")
    options = set(re.findall(r"^  (?:-h, )?--([a-z-]+)", usage, re.MULTILINE))
    page = (TREE / "packaging/man/camera-simulator.1.in").read_text().replace("\\-", "-")
    described = set(re.findall(r"^\.B[IR]? (?:-h \", \" )?--([a-z-]+)", page, re.MULTILINE))
    assert described == options - {"no-build", "doctor"}  # which are about a build


@pytest.mark.parametrize("preset, architecture", [("release", "amd64"), ("arm-small", "armhf")])
def test_cpack_makes_a_package_of_each_component(preset, architecture, tmp_path):
    run("cpack", "--config", TREE / "build" / preset / "CPackConfig.cmake", "-B", tmp_path)
    version = project_version()
    shutil.rmtree(tmp_path / "_CPack_Packages")
    simulator = {
        f"camera-remote-simulator_{version}_{architecture}.deb",
        f"camera-remote-{version}-{architecture}-simulator.tar.gz",
    } if preset == "release" else set()
    assert {name for name in files_below(tmp_path) if not name.endswith(".sha256")} == simulator | {
        f"camera-remote_{version}_{architecture}.deb",
        f"camera-remote-web_{version}_all.deb",
        f"camera-remote-doc_{version}_all.deb",
        f"camera-remote-{version}-{architecture}-runtime.tar.gz",
        f"camera-remote-{version}-{architecture}-web.tar.gz",
        f"camera-remote-{version}-{architecture}-doc.tar.gz",
    }
    runtime = tmp_path / f"camera-remote_{version}_{architecture}.deb"
    assert run("dpkg-deb", "--field", runtime, "Package", "Version", "Architecture") == (
        f"Package: camera-remote\nVersion: {version}\nArchitecture: {architecture}\n")
    assert run("dpkg-deb", "--field", runtime, "Depends").strip() == ""


@pytest.mark.parametrize("preset", ["release", "arm-small"])
def test_a_build_from_a_tarball_elsewhere_has_the_same_bytes(preset, tmp_path):
    elsewhere = build(copy_sources(tmp_path / "a rather longer folder name"), preset)
    assert (elsewhere / HANDLER).read_bytes() == (TREE / "build" / preset / HANDLER).read_bytes()


@pytest.fixture(name="for_a_board", scope="module")
def fixture_for_a_board(tmp_path_factory):
    """A build that links a shared platform library and installs the handler elsewhere."""
    folder = tmp_path_factory.mktemp("board")
    source = copy_sources(folder / "source")
    library = folder / "libplatform.so"
    run("g++", "-shared", "-fPIC", "-I", source, "-o", library, source / "platform/stand_in.cpp")
    build_folder = build(source, "release", "-DCAMERA_CGI_DIR=www/cgi",
                         f"-DCAMERA_PLATFORM_LIBRARY={library}")
    run("cmake", "--install", build_folder, "--prefix", folder / "root", "--component", "runtime")
    return folder


def test_the_folder_of_the_handler_can_be_chosen(for_a_board):
    assert files_below(for_a_board / "root") == {"www/cgi/" + HANDLER}


@pytest.mark.parametrize("handler", ["source/build/release", "root/www/cgi"])
def test_with_a_shared_platform_library_no_folder_of_the_build_is_kept(for_a_board, handler):
    binary = for_a_board / handler / HANDLER
    dynamic = run("readelf", "--dynamic", binary)
    assert "RPATH" not in dynamic and "RUNPATH" not in dynamic
    assert re.findall(r"NEEDED.*\[(.*)\]", dynamic) == ["libplatform.so", "libc.so.6"]
    reply = run(binary, "100", GET_SYSTEM_INFO, env={"LD_LIBRARY_PATH": str(for_a_board)})
    assert '"Requested":"GetSystemInfo","Result":"Success"' in reply
