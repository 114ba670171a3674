function build_attribute_profile (folder)
%BUILD_ATTRIBUTE_PROFILE  Compile the module attribute_profile from its sources.
%
%   build_attribute_profile ()
%   build_attribute_profile (FOLDER)
%
%   Compiles the sources that come with this file and puts the module into
%   FOLDER, by default the folder of this file: attribute_profile.mexw64,
%   .mexa64, .mexmaci64 or .mexmaca64 in MATLAB, by `mex`; attribute_profile.mex
%   in GNU Octave, by `mkoctfile --mex`.  Needs a C++17 compiler that the host is
%   set up for (`mex -setup C++` in MATLAB): on Linux GCC 8 or later, on Windows
%   MinGW-w64, on macOS Xcode's Clang; and about a minute.  A failure of the
%   compiler is an error, and so is a FOLDER that can't be written to.  A module that is loaded is unloaded first.
%
%   Example
%
%     build_attribute_profile (tempdir)
%     addpath (tempdir)
%     AP = attribute_profile (uint8 (magic (4)), 'area', 3);
%
%   See also attribute_profile, mex, mkoctfile

% SPDX-License-Identifier: MIT

  here = fileparts (mfilename ('fullpath'));
  if nargin < 1
    folder = here;
  end
  names = with_char ({folder});
  folder = names{1};
  check_folder (folder);
  root = fullfile (here, 'src');
  if ~exist (root, 'dir')
    root = fileparts (here);  % a working copy of the project
  end
  sources = [sources_in(fullfile (root, 'entry')), sources_in(fullfile (root, 'entry', 'types'))];
  include = {['-I' root], ['-I' fullfile(root, 'include')]};
  % A fused multiply-add rounds once where two operations round twice: it would change the sums of the attributes.
  flags = '-std=c++17 -O3 -DNDEBUG -fvisibility=hidden -fvisibility-inlines-hidden -ffp-contract=off';

  clear ('attribute_profile');
  fprintf ('Compiling %d files of %s\n', numel (sources), root);
  if exist ('OCTAVE_VERSION', 'builtin')
    module = compile_for_octave (folder, root, [include sources], flags);
  else
    module = compile_for_matlab (folder, [include sources], root, flags);
  end
  fprintf ('Made %s\n', module);
end

function module = compile_for_octave (folder, root, inputs, flags)
  if isunix && ~ismac
    % Else the adapter's functions would be taken for the host's of the same names, where modules are ELF files.
    inputs{end+1} = ['-Wl,--version-script=' fullfile(root, 'entry', 'exports.map')];
  end
  % mkoctfile does not know -std itself and reads the flags of the compiler from here.
  before = getenv ('CXXFLAGS');
  restore = onCleanup (@() setenv ('CXXFLAGS', before));
  setenv ('CXXFLAGS', [flags ' -fPIC']);
  module = fullfile (folder, 'attribute_profile.mex');
  [~, status] = mkoctfile ('--mex', '-o', module, inputs{:}, fullfile (root, 'entry', 'octave', 'adapter.cpp'));
  if status ~= 0
    error ('build_attribute_profile: the compiler failed; its messages are above');
  end
end

function module = compile_for_matlab (folder, inputs, root, flags)
  link = {};
  if ispc
    compiler = mex.getCompilerConfigurations ('C++', 'Selected');
    if isempty (compiler) || isempty (regexpi (compiler(1).Name, 'mingw'))
      error ('build_attribute_profile: on Windows this needs MinGW-w64: install it as an Add-On, then mex -setup C++');
    end
    % MATLAB is made by another compiler, which unwinds none of MinGW's frames: the adapter does, and brings its own
    % run-time.
    inputs{end+1} = fullfile (root, 'entry', 'windows', 'adapter.cpp');
    flags = [flags ' -include entry/windows/link_names.hpp'];
    link = {'LDFLAGS=$LDFLAGS -static'};
  elseif ~ismac
    % MATLAB brings a C++ run-time that may be older than the compiler's: the module carries its own. mex ends its line
    % with -lstdc++, which -static-libstdc++ leaves as it is, and which adds nothing where all is found before.
    link = {'LINKLIBS=-Wl,--as-needed -l:libstdc++.a $LINKLIBS'};
  end
  mex ('-outdir', folder, '-output', 'attribute_profile', inputs{:}, ['CXXFLAGS=$CXXFLAGS ' flags], link{:});
  module = fullfile (folder, ['attribute_profile.' mexext()]);
end

function check_folder (folder)
  [~, name] = fileparts (tempname ());
  probe = fullfile (folder, name);
  file = fopen (probe, 'w');
  if file < 0
    error ('build_attribute_profile: there is no folder ''%s'', or you may not write into it', folder);
  end
  fclose (file);
  delete (probe);
end

function files = sources_in (folder)
  found = dir (fullfile (folder, '*.cpp'));
  files = cellfun (@(name) fullfile (folder, name), {found.name}, 'UniformOutput', false);
end
