function attribute_profile_demo (picture, folder, step)
%ATTRIBUTE_PROFILE_DEMO  Attribute profiles of a picture, as montages of planes.
%
%   attribute_profile_demo (PICTURE, FOLDER)
%   attribute_profile_demo (PICTURE, FOLDER, STEP)
%
%   Reads the image file PICTURE as grey levels, computes two profiles (area and
%   standard deviation), checks the planes and writes the montages area.png and
%   std.png into FOLDER, each plane shown at 1/STEP of its size (default 4).
%   First row: dark regions removed, from the greatest threshold to the least;
%   second row: the input; third row: bright regions removed, from the least
%   threshold to the greatest.  A plane in the wrong place is an error.
%
%   Works in MATLAB and in GNU Octave.
%
%   See also attribute_profile

% SPDX-License-Identifier: MIT

  if nargin < 3
    step = 4;
  end
  image = grey_levels (imread (picture));
  fprintf ('%s: %d x %d pixels of class %s\n', picture, size (image, 1), size (image, 2), class (image));
  show_profile (image, 'area', [100 1000 10000], folder, step);
  show_profile (image, 'std', [5 10 20], folder, step);
end

function show_profile (image, attribute, thresholds, folder, step)
  fprintf ('\nattribute_profile (image, ''%s'', [%s])\n', attribute, num2str (thresholds));
  start = tic;
  planes = attribute_profile (image, attribute, thresholds);
  fprintf ('  %d x %d x %d, %.2f seconds\n', size (planes, 1), size (planes, 2), size (planes, 3), toc (start));
  check_planes (image, attribute, thresholds, planes);
  file = fullfile (folder, [attribute '.png']);
  imwrite (montage_of (planes, step), file);
  fprintf ('  montage of the planes: %s\n', file);
end

% The planes have to lie on their side of the input, which itself has to stand in the middle, and the outermost ones
% have to be those of the last threshold.
function check_planes (image, attribute, thresholds, planes)
  n = numel (thresholds);
  if ~isequal (planes(:,:,n+1), image)
    error ('%s: the middle plane is not the input image', attribute);
  end
  for k = 1:n
    if any (any (planes(:,:,k) < image)) || any (any (planes(:,:,n+1+k) > image))
      error ('%s: planes %d and %d are not on their sides of the input', attribute, k, n + 1 + k);
    end
  end
  outermost = attribute_profile (image, attribute, thresholds(n));
  if ~isequal (planes(:,:,[1 2*n+1]), outermost(:,:,[1 3]))
    error ('%s: the first and the last plane are not those of threshold %g', attribute, thresholds(n));
  end
  % A region that reaches a threshold reaches every smaller one; for standard deviations, which do not grow from a
  % region to the one around it, the filtered values need not be in order.
  if strcmp (attribute, 'area') && any (any (any (planes(:,:,1:2*n) < planes(:,:,2:2*n+1))))
    error ('%s: the planes do not run from bright to dark', attribute);
  end
  fprintf ('  plane %d is the input; the order of the planes is right\n', n + 1);
end

% Grey levels of an RGB picture, with the weights of ITU-R BT.601.
function grey = grey_levels (picture)
  if size (picture, 3) == 1
    grey = picture;
  else
    rgb = double (picture);
    grey = uint8 (0.299 * rgb(:,:,1) + 0.587 * rgb(:,:,2) + 0.114 * rgb(:,:,3));
  end
end

% Three rows of tiles on grey: planes 1 to N, the middle one, planes N + 2 to 2 N + 1.
function sheet = montage_of (planes, step)
  n = (size (planes, 3) - 1) / 2;
  gap = 4;
  tile = shrunk (planes(:,:,1), step);
  [rows, cols] = size (tile);
  sheet = repmat (uint8 (160), 3 * (rows + gap) + gap, n * (cols + gap) + gap);
  for k = 1:2*n+1
    if k <= n
      place = [0, k - 1];
    elseif k == n + 1
      place = [1, (n - 1) / 2];
    else
      place = [2, k - n - 2];
    end
    top = gap + place(1) * (rows + gap);
    left = gap + floor (place(2) * (cols + gap));
    sheet(top+(1:rows), left+(1:cols)) = shrunk (planes(:,:,k), step);
  end
end

% Means of STEP x STEP pixels; what is left over at the right and at the bottom is dropped.
function small = shrunk (plane, step)
  rows = floor (size (plane, 1) / step);
  cols = floor (size (plane, 2) / step);
  blocks = reshape (double (plane(1:rows*step,1:cols*step)), step, rows, step, cols);
  small = uint8 (reshape (mean (mean (blocks, 1), 3), rows, cols));
end
