# The short names of what one does here. CMake and its presets do the work; PRESET=debug|release|asan|tsan picks one.

PRESET ?= release
BUILD := build/$(PRESET)
JOBS ?= $(shell nproc)

.PHONY: all release run test install packages check-packages check-fresh reference translations torture bench bench-report benchmarks deps format tidy pictures fuzz soak valgrind mutants clean

all: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) -j $(JOBS)

release: build/release/build.ninja
	cmake --build --preset release -j $(JOBS)

# Takes a document to a server and back: in windows where there is a display, otherwise with screenshots. This and "make test"
# install what the machine lacks; nothing else here does, but for tools that are named where they are used.
run: deps
	$(MAKE) --no-print-directory $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) -j $(JOBS) --target tljira tljira-standin tessaloom tessaloom-tour
	scripts/run $(BUILD)

test: deps
	$(MAKE) --no-print-directory all
	ctest --preset $(PRESET)

# Below PREFIX; DESTDIR is honoured.
PREFIX ?= /usr/local
install: all
	DESTDIR=$(abspath $(DESTDIR)) cmake --install $(BUILD) --prefix $(PREFIX)

# Debian packages of what is committed, in build/packages.
packages:
	scripts/make-packages build/packages

# The release of Debian that a fresh one is made of, by default this machine's own.
SUITE ?= $(shell . /etc/os-release && echo $$VERSION_CODENAME)

# Builds the packages in a copy of a fresh Debian, which is made once, and installs, uses and removes them in another. As root.
check-packages: build/fresh-$(SUITE)
	scripts/make-packages --in build/fresh-$(SUITE) build/packages-$(SUITE)
	scripts/check-packages build/fresh-$(SUITE) build/packages-$(SUITE)

# Runs "make run" and "make test" on a clean clone in a copy of a fresh Debian. As root; with AGAIN=again it goes on in the copy
# of the last time.
check-fresh: build/fresh-$(SUITE)
	scripts/check-fresh build/fresh-$(SUITE) $(AGAIN) JOBS=$(JOBS)

build/fresh-%:
	mkdir -p build
	scripts/make-fresh $* $@

# The public headers and the documents as pages, and as a help file for Qt Creator.
REFERENCE ?= build/reference
reference: all
	rm -rf $(REFERENCE)
	mkdir $(REFERENCE)
	cmake --install $(BUILD) --prefix $(REFERENCE)/installation >$(REFERENCE)/installation.log
	scripts/make-reference $(REFERENCE)/installation/include $(REFERENCE)

# Brings translations/*.ts up to date with the interface files.
translations: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) --target translations

# Lets one call of the system after the other fail while the tool works, kills it, and cuts its power; writes the tables of
# docs/reliability.md. All of it takes the better part of an hour: EVERY=20 takes one call of 20, BUDGET=600 as much as fits into
# ten minutes for each table.
EVERY ?= 1
BUDGET ?= 0
torture: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) -j $(JOBS) --target tljira-torture
	$(BUILD)/tests/torture/tljira-torture refusals --every $(EVERY) --seconds $(BUDGET) --write docs/reliability.md
	$(BUILD)/tests/torture/tljira-torture kills --runs 500 --write docs/reliability.md
	$(BUILD)/tests/torture/tljira-torture cuts --write docs/reliability.md
	$(BUILD)/tests/torture/tljira-torture refusals --windows --every $(EVERY) --seconds $(BUDGET) --write docs/reliability.md
	$(BUILD)/tests/torture/tljira-torture kills --windows --every $(EVERY) --runs 50 --write docs/reliability.md

# Measures the release build against the peers; bench-report also writes docs/benchmarks.md and draws docs/benchmarks/, with files of
# up to LARGEST MiB.
LARGEST ?= 4096
bench: benchmarks
	build/release/bench/tljira-bench

bench-report: benchmarks
	build/release/bench/tljira-bench --write docs/benchmarks.md
	scripts/bench-pictures build/release --largest $(LARGEST) --page docs/benchmarks.md

benchmarks:
	cmake --preset release -DTL_BUILD_BENCHMARKS=ON
	cmake --build --preset release -j $(JOBS)

# The pictures of docs/screenshots/.
pictures: $(BUILD)/build.ninja
	cmake --build --preset $(PRESET) -j $(JOBS) --target tessaloom-tour
	scripts/make-pictures $(BUILD)

# Lets each fuzzer of tests/fuzz look for a broken input, for so many seconds.
SECONDS ?= 60
fuzz:
	scripts/install-packages clang
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	scripts/fuzz build/fuzz $(SECONDS)

# Both jobs in windows and by the tool for so many minutes; what their processes take must not grow.
MINUTES ?= 10
soak: all
	scripts/soak $(BUILD) $(MINUTES)

# Breaks one line after the other, and looks whether a test notices; writes the table of docs/reliability.md. All of it takes days:
# SAMPLE=100 takes as many, drawn by lot with SEED. It goes on where the last run ended.
SAMPLE ?= 0
SEED ?= 1
mutants:
	scripts/install-packages ccache mold
	cmake -G Ninja -B build/mutants -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
		-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold -DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=mold
	scripts/mutants build/mutants --sample $(SAMPLE) --seed $(SEED) --write docs/reliability.md

# Valgrind's memcheck watches each command of the tool, in a build without optimisation.
valgrind: build/debug/build.ninja
	cmake --build --preset debug -j $(JOBS) --target tljira tljira-standin
	scripts/valgrind build/debug

# What the machine lacks, through apt.
deps:
	scripts/install-packages

build/%/build.ninja:
	cmake --preset $* || { echo 'If something is missing: "make deps" installs it.' >&2; exit 1; }

SOURCES = $(shell git ls-files '*.h' '*.cpp')

format:
	scripts/install-packages clang-format
	clang-format -i $(SOURCES)

# The arguments are for a clang that checks the build of another compiler.
tidy: all
	scripts/install-packages clang-tidy
	run-clang-tidy -quiet -p $(BUILD) -extra-arg=-Wno-unknown-warning-option \
		-extra-arg=-D__cpp_impl_coroutine=201902L -extra-arg=-DBOOST_ASIO_HAS_CO_AWAIT=1 '^(?!.*/(build|tests)/).*\.cpp$$'

clean:
	rm -rf build
