function attribute_profile_demo (picture, folder, step)
%ATTRIBUTE_PROFILE_DEMO  Attribute profiles of a picture, as montages of planes.
%
%   attribute_profile_demo (PICTURE, FOLDER)
%   attribute_profile_demo (PICTURE, FOLDER, STEP)
%
%   Reads the image file PICTURE as grey levels, of the class that the file has
%   (indexed colours and black-and-white pictures become uint8), computes two profiles (area and
%   standard deviation), checks the planes and writes the montages area.png and
%   std.png into FOLDER, each plane shown at 1/STEP of its size (default 4), as
%   attribute_profile_montage does.  A plane in the wrong place is an error.
%
%   Works in MATLAB and in GNU Octave.
%
%   See also attribute_profile, attribute_profile_montage

% SPDX-License-Identifier: MIT

  if nargin < 2
    error ('attribute_profile_demo: give a picture file and a folder for the montages');
  end
  if nargin < 3
    step = 4;
  end
  if ~isnumeric (step) || ~isscalar (step) || ~(step >= 1 && step == floor (step))
    error ('attribute_profile_demo: STEP has to be a whole number of at least 1');
  end
  names = with_char ({picture, folder});
  [picture, folder] = names{:};
  [values, map] = imread (picture);
  image = grey_levels (values, map);
  if ~exist (folder, 'dir')
    error ('attribute_profile_demo: there is no folder %s', folder);
  end
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
  imwrite (attribute_profile_montage (planes, thresholds, 1 / step), file);
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

% Grey levels, for colours with the weights of ITU-R BT.601. MAP has the colours of an indexed picture, whose values
% count from 0.
function grey = grey_levels (values, map)
  weights = [0.299; 0.587; 0.114];
  if ~isempty (map)
    levels = uint8 (255 * map(:,1:3) * weights);
    grey = reshape (levels(double (values) + 1), size (values));
  elseif islogical (values)
    grey = 255 * uint8 (values);
  elseif size (values, 3) < 3
    grey = values(:,:,1);
  else
    grey = reshape (double (values(:,:,1:3)), [], 3) * weights;
    grey = cast (reshape (grey, size (values, 1), size (values, 2)), class (values));
  end
end
