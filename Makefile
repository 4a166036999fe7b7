# Builds the engine with one compiler and nothing else, as match frameworks ask for it:
#   make EXE=path [CXX=clang++]      then: path, or: make bench EXE=path
# With Boost, `make companion EXE=path` builds path-uci besides, the companion. It runs the engine
# `korvu` of its own folder, so let path end with /korvu, or name the engine: path-uci path.
# Whoever works on the engine builds with CMake; see CONTRIBUTING.md.
EXE ?= korvu
STEP ?= 1
CXXFLAGS ?= -O3
version := $(shell sed -n 's/^project.korvu VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
flags := -std=c++20 $(CXXFLAGS) -ffp-contract=off -I. -Isrc -DKORVU_VERSION='"$(version)"'

sources := $(wildcard src/*/*.cpp)
of_the_companion := $(wildcard companion/*.cpp rules/*.cpp)
engine := $(filter-out src/frontend/main.cpp,$(sources))
headers := $(wildcard src/*/*.h tools/*.h companion/*.h rules/*.h)
objects = $(patsubst %.cpp,$(EXE).o/%.o,$(1))

$(EXE): $(call objects,$(sources))
	$(CXX) $(flags) $(LDFLAGS) -o $@ $^

$(EXE)-bench: $(call objects,$(engine) tools/bench.cpp)
	$(CXX) $(flags) $(LDFLAGS) -o $@ $^

.PHONY: companion
companion: $(EXE) $(EXE)-uci

$(EXE)-uci: $(call objects,$(engine) $(of_the_companion))
	$(CXX) $(flags) $(LDFLAGS) -o $@ $^ -lboost_filesystem -pthread

$(EXE).o/%.o: %.cpp $(headers)
	@mkdir -p $(dir $@)
	$(CXX) $(flags) -c -o $@ $<

# The last line is the signature: nodes, and nodes per second. STEP=N takes every N-th position only.
.PHONY: bench
bench: $(EXE)-bench
	$(abspath $(EXE)-bench) $(STEP)
