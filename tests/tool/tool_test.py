"""What the tests of the tool share: they run it in an empty folder and look at its pictures."""
import os
import subprocess
import sys
import tempfile
import unittest

from picture import Picture

TOOL = os.path.abspath(sys.argv.pop(1))  # path of the tool, from the command line

RED, NAVY = (255, 0, 0, 255), (0, 0, 128, 255)
BLACK, CLEAR = (0, 0, 0, 255), (0, 0, 0, 0)
SQUARE = '<rect width="4" height="4" fill="red"/>'


def svg(attributes, content=SQUARE):
    return f'<svg xmlns="http://www.w3.org/2000/svg" {attributes}>\n{content}\n</svg>\n'


class ToolTest(unittest.TestCase):
    """Each test runs in an empty folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode()
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(data)
        return name

    def read(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read()

    def exists(self, name):
        return os.path.exists(os.path.join(self.folder, name))

    def run_tool(self, *arguments, stdin=b""):
        """(exit status, standard output, standard error as text)"""
        done = subprocess.run([TOOL, *arguments], input=stdin, cwd=self.folder, timeout=120,
                              capture_output=True, check=False)
        return done.returncode, done.stdout, done.stderr.decode()

    def files(self):
        return sorted(os.listdir(self.folder))

    def render(self, document, *options):
        """The picture of a document that must render without a word."""
        status, output, errors = self.run_tool("render", "-", "-o", "-", *options,
                                               stdin=document.encode())
        self.assertEqual((status, errors), (0, ""))
        return Picture(output)

    def expect_failure(self, message, *arguments, status=1, stdin=b""):
        """`message` is what standard error begins with."""
        actual_status, output, errors = self.run_tool("render", *arguments, stdin=stdin)
        self.assertEqual(actual_status, status, errors)
        self.assertEqual(output, b"")
        self.assertEqual(errors[: len(message)], message, errors)
