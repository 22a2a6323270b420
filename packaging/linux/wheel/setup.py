"""The Python module as a wheel that brings the library along; tools/wheel.sh lays out what it packs."""

import os

from setuptools import setup
from wheel.bdist_wheel import bdist_wheel


class PlatformWheel(bdist_wheel):
    """For every Python of one platform: the library in it is not tied to one."""

    def finalize_options(self):
        super().finalize_options()
        self.root_is_pure = False

    def get_tag(self):
        return "py3", "none", os.environ["DRAVIK_PLATFORM"]


setup(
    name="dravik",
    version=os.environ["DRAVIK_VERSION"],
    description="Reads grey images with fonts of the Dravik OCR tool, and teaches them",
    author="The Dravik authors",
    license="MIT",
    license_files=["LICENSE"],
    packages=["dravik"],
    package_data={"dravik": ["py.typed", "libdravik.so.0"]},
    python_requires=">=3.9",
    install_requires=["numpy"],
    cmdclass={"bdist_wheel": PlatformWheel},
)
