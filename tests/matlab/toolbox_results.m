function [found, expected] = toolbox_results ()
% What the functions of the toolbox return and write, and what they have to.

% SPDX-License-Identifier: MIT

  I = uint8 (magic (6));
  AP = attribute_profile (I, 'area', 2:4);
  results = cell (0, 2);

  % Texts in double quotes, which are of a class of their own in MATLAB; tests/octave/@string stands in for it.
  S = @string;
  results(end+1,:) = {attribute_profile_thresholds(I, S ('area'), 2, 8, S ('max'), [1 9]), ...
                      attribute_profile_thresholds(I, 'area', 2, 8, 'max', [1 9])};
  [printed, EAP] = evalc ('extended_attribute_profile (I, S (''area''), 2:4, 4, S (''min''), S (''progress''))');
  results(end+1,:) = {EAP, AP};
  results(end+1,:) = {regexprep(printed, '\d+\.\d s', 't'), sprintf('Filtering Rule: min\nband 1 of 1, t\n')};
  results(end+1,:) = {attribute_profile_curve_picture(1:3, 1:3, 2, S ('std')), ...
                      attribute_profile_curve_picture(1:3, 1:3, 2, 's')};
  results(end+1,:) = {message_of('build_attribute_profile', {S('/proc')}), ...
                      'there is no folder ''/proc'', or you may not write into it'};

  % Bands one after another, and differences.
  X = uint8 (cat (3, magic (9), magic (9)', mod (7 * magic (9), 81)));
  results(end+1,:) = {extended_attribute_profile(X, 'std', [2 9], 8), ...
                      cat(3, attribute_profile (X(:,:,1), 'std', [2 9], 8), ...
                          attribute_profile (X(:,:,2), 'std', [2 9], 8), attribute_profile (X(:,:,3), 'std', [2 9], 8))};
  results(end+1,:) = {message_of('extended_attribute_profile', {X, 'area', 3, 5}), ...
                      'This value of connectivity does not match any connectivity rule for 2d images.'};
  small = attribute_profile (uint8 ([2 2 9 9; 2 8 1 9; 7 7 1 3]), 'area', 3);
  results(end+1,:) = {differential_attribute_profile(small), ...
                      cat(3, int16 ([0 0 0 0; 0 0 2 0; 0 0 2 0]), int16 ([0 0 0 0; 0 1 0 0; 0 0 0 0]))};
  top = intmax ('uint64');
  differences = differential_attribute_profile (cat (3, [top, 0], [top - 5, 7], [top - 5, 7]));
  results(end+1,:) = {differences(:,:,1), int64([5 -7])};

  % captions.png was made by these calls and read by eye.
  curves = [attribute_profile_curve_picture([1 20 300], [0 1 4], 20, 'a'); ...
            attribute_profile_curve_picture([2 4 6], [0 9 9], 4.1254, 'inertia'); ...
            attribute_profile_curve_picture([2 4 6], [0 1 1], [], 'std'); ...
            attribute_profile_curve_picture([2 4 6], [0 8 8], [2 6], 'diagonal')];
  montage = attribute_profile_montage (zeros (1, 1, 7, 'uint8'), [1234567890, -3.5e+20, NaN]);
  curves(end+(1:size (montage, 1)),1:size (montage, 2)) = montage;
  folder = fileparts (mfilename ('fullpath'));
  results(end+1,:) = {curves, imread(fullfile (folder, 'captions.png'))};

  % The demo writes montages.
  picture = fullfile (folder, '..', 'entry', 'coast.pgm');
  out = tempname ();
  mkdir (out);
  evalc ('attribute_profile_demo (picture, out)');
  written = imread (fullfile (out, 'area.png'));
  delete (fullfile (out, '*.png'));
  rmdir (out);
  L = [100 1000 10000];
  results(end+1,:) = {written, attribute_profile_montage(attribute_profile (imread (picture), 'area', L), L, 1/4)};

  found = results(:,1);
  expected = results(:,2);
end
