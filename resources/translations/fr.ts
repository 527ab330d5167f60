<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>PluginLocale</name>
    <message>
        <source>Plugin Settings - %@</source>
        <translation>Réglages du module - %@</translation>
    </message>
    <message>
        <source>Do you want to apply the settings?</source>
        <translation>Voulez-vous appliquer les réglages ?</translation>
    </message>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>Choisir un fichier image</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>La copie a échoué !</translation>
    </message>
    <message>
        <source>The workspace could not be backed up.</source>
        <translation>L’espace de travail n’a pas pu être sauvegardé.</translation>
    </message>
    <message>
        <source>Your changes are still saved as you make them, but Cancel will not be able to undo them.</source>
        <translation>Vos modifications sont toujours enregistrées au fur et à mesure, mais « Annuler » ne pourra pas les défaire.</translation>
    </message>
    <message>
        <source>Nothing could be undone.</source>
        <translation>Rien n’a pu être annulé.</translation>
    </message>
    <message>
        <source>There is no complete backup of the workspace, so it stays as it is.</source>
        <translation>Il n’existe pas de sauvegarde complète de l’espace de travail ; il reste donc tel quel.</translation>
    </message>
    <message>
        <source>The workspace could not be restored.</source>
        <translation>L’espace de travail n’a pas pu être restauré.</translation>
    </message>
    <message>
        <source>It stays as it is. The backup is kept and offered again the next time the window opens.</source>
        <translation>Il reste tel quel. La sauvegarde est conservée et sera proposée de nouveau à la prochaine ouverture de la fenêtre.</translation>
    </message>
    <message>
        <source>The settings window closed unexpectedly last time.</source>
        <translation>La fenêtre des réglages s’est fermée de manière inattendue la dernière fois.</translation>
    </message>
    <message>
        <source>Go back to the workspace as it was before that window opened, or keep it as it is now?</source>
        <translation>Revenir à l’espace de travail tel qu’il était avant l’ouverture de cette fenêtre, ou le garder tel qu’il est maintenant ?</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Revenir</translation>
    </message>
    <message>
        <source>Keep As It Is</source>
        <translation>Garder tel quel</translation>
    </message>
    <message>
        <source>Restoring the workspace…</source>
        <translation>Restauration de l’espace de travail…</translation>
    </message>
    <message>
        <source>Left %1 %, top %2 %, right %3 %, bottom %4 %</source>
        <translation>Gauche %1 %, haut %2 %, droite %3 %, bas %4 %</translation>
    </message>
    <message>
        <source>No settings to preview yet</source>
        <translation>Aucun réglage à prévisualiser pour l’instant</translation>
    </message>
    <message>
        <source>No image chosen</source>
        <translation>Aucune image choisie</translation>
    </message>
    <message>
        <source>The image cannot be loaded</source>
        <translation>L’image ne peut pas être chargée</translation>
    </message>
    <message>
        <source>The workspace could not be created.</source>
        <translation>L’espace de travail n’a pas pu être créé.</translation>
    </message>
    <message>
        <source>Changes made in this window cannot be saved.</source>
        <translation>Les modifications faites dans cette fenêtre ne peuvent pas être enregistrées.</translation>
    </message>
    <message>
        <source>Fit to image</source>
        <translation>Ajuster à l’image</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annuler la modification</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir la modification</translation>
    </message>
    <message>
        <source>The left and right margins add up to 100 % or more: the image has no width left on the page.</source>
        <translation>Les marges gauche et droite atteignent ensemble 100 % ou plus : l’image n’a plus de largeur sur la page.</translation>
    </message>
    <message>
        <source>The top and bottom margins add up to 100 % or more: the image has no height left on the page.</source>
        <translation>Les marges haute et basse atteignent ensemble 100 % ou plus : l’image n’a plus de hauteur sur la page.</translation>
    </message>
    <message>
        <source>The image file is missing.</source>
        <translation>Le fichier image est introuvable.</translation>
    </message>
    <message>
        <source>This file is not an image that can be read.</source>
        <translation>Ce fichier n’est pas une image lisible.</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 pixels</translation>
    </message>
    <message>
        <source>Only an image file or an http or https link can be dropped here.</source>
        <translation>Seul un fichier image ou un lien http ou https peut être déposé ici.</translation>
    </message>
    <message>
        <source>Drop one image file or link at a time.</source>
        <translation>Déposez un seul fichier image ou lien à la fois.</translation>
    </message>
    <message>
        <source>A folder cannot be used: drop one image file.</source>
        <translation>Un dossier ne peut pas être utilisé : déposez un seul fichier image.</translation>
    </message>
    <message>
        <source>Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.</source>
        <translation>Seuls les fichiers image JPEG, GIF et PNG (.jpg, .jpeg, .gif, .png) peuvent être utilisés.</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>Ce fichier ne peut pas être lu.</translation>
    </message>
    <message>
        <source>Only http and https links can be used.</source>
        <translation>Seuls les liens http et https peuvent être utilisés.</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Appliquer</translation>
    </message>
    <message>
        <source>Discard Changes</source>
        <translation>Annuler les modifications</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>Continuer la modification</translation>
    </message>
    <message>
        <source>Alert-Image Plugin</source>
        <translation>Image Plugin</translation>
    </message>
    <message>
        <source>Alert-OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Alert-Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Alert-YES</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>Alert-NO</source>
        <translation>Non</translation>
    </message>
    <message>
        <source>The book will not show the image. Publish anyway?</source>
        <translation>Le livre n’affichera pas l’image. Publier quand même ?</translation>
    </message>
    <message>
        <source>Publish Anyway</source>
        <translation>Publier quand même</translation>
    </message>
    <message>
        <source>Readers' books open only http and https links: this link will not show the image.</source>
        <translation>Les livres de vos lecteurs n’ouvrent que les liens http et https : ce lien n’affichera pas l’image.</translation>
    </message>
    <message>
        <source>This link names no web server: readers' books will not find the image.</source>
        <translation>Ce lien ne nomme aucun serveur web : les livres de vos lecteurs ne trouveront pas l’image.</translation>
    </message>
    <message>
        <source>This link has blanks in it: readers' books will not find the image.</source>
        <translation>Ce lien contient des espaces : les livres de vos lecteurs ne trouveront pas l’image.</translation>
    </message>
    <message>
        <source>A file: link points to a file on this computer, which readers do not have. Choose Local file instead.</source>
        <translation>Un lien file: désigne un fichier de cet ordinateur, que vos lecteurs n’ont pas. Choisissez plutôt Fichier local.</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Réglages du module - Image Plugin</translation>
    </message>
    <message>
        <source>&amp;Position on the page</source>
        <translation>&amp;Position sur la page</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>Where the image lies on the page. Arrow keys move it by 1 %, with Shift by 10 %; with Alt they move its right or bottom edge.</source>
        <translation>L’emplacement de l’image sur la page. Les flèches la déplacent de 1 %, avec Maj de 10 % ; avec Alt, elles déplacent son bord droit ou inférieur.</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it. Hold Ctrl or Alt while dragging to place it freely, without snapping.</source>
        <translation>Faites glisser le cadre pour déplacer l’image, ou ses poignées pour la redimensionner. Maintenez Ctrl ou Alt pendant le glissement pour la placer librement, sans magnétisme.</translation>
    </message>
    <message>
        <source>&amp;Left (%):</source>
        <translation>&amp;Gauche (%) :</translation>
    </message>
    <message>
        <source>Left margin (%)</source>
        <translation>Marge gauche (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's left edge, in percent of the page's width.</source>
        <translation>La distance entre l’image et le bord gauche de la page, en pourcentage de la largeur de la page.</translation>
    </message>
    <message>
        <source>&amp;Top (%):</source>
        <translation>&amp;Haut (%) :</translation>
    </message>
    <message>
        <source>Top margin (%)</source>
        <translation>Marge haute (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's top edge, in percent of the page's height.</source>
        <translation>La distance entre l’image et le bord supérieur de la page, en pourcentage de la hauteur de la page.</translation>
    </message>
    <message>
        <source>&amp;Right (%):</source>
        <translation>&amp;Droite (%) :</translation>
    </message>
    <message>
        <source>Right margin (%)</source>
        <translation>Marge droite (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's right edge, in percent of the page's width.</source>
        <translation>La distance entre l’image et le bord droit de la page, en pourcentage de la largeur de la page.</translation>
    </message>
    <message>
        <source>&amp;Bottom (%):</source>
        <translation>&amp;Bas (%) :</translation>
    </message>
    <message>
        <source>Bottom margin (%)</source>
        <translation>Marge basse (%)</translation>
    </message>
    <message>
        <source>The image's distance from the page's bottom edge, in percent of the page's height.</source>
        <translation>La distance entre l’image et le bord inférieur de la page, en pourcentage de la hauteur de la page.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>Tr&amp;ansparency (%):</source>
        <translation>&amp;Transparence (%) :</translation>
    </message>
    <message>
        <source>Transparency</source>
        <translation>Transparence</translation>
    </message>
    <message>
        <source>How much of the page shows through the image, from 0 % (opaque) to 100 % (invisible).</source>
        <translation>La part de la page visible à travers l’image, de 0 % (opaque) à 100 % (invisible).</translation>
    </message>
    <message>
        <source>Transparency (%)</source>
        <translation>Transparence (%)</translation>
    </message>
    <message>
        <source>The transparency in percent, from 0 to 100.</source>
        <translation>La transparence en pourcentage, de 0 à 100.</translation>
    </message>
    <message>
        <source>La&amp;yer:</source>
        <translation>&amp;Calque :</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Calque</translation>
    </message>
    <message>
        <source>Whether the image lies above or below the page's own content.</source>
        <translation>Si l’image se trouve au-dessus ou au-dessous du contenu de la page.</translation>
    </message>
    <message>
        <source>Abo&amp;ve the page content</source>
        <translation>A&amp;u-dessus du contenu de la page</translation>
    </message>
    <message>
        <source>The image covers the page's text.</source>
        <translation>L’image recouvre le texte de la page.</translation>
    </message>
    <message>
        <source>Belo&amp;w the page content</source>
        <translation>&amp;Sous le contenu de la page</translation>
    </message>
    <message>
        <source>The page's text covers the image.</source>
        <translation>Le texte de la page recouvre l’image.</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>The page as the book will show it, rebuilt shortly after each change.</source>
        <translation>La page telle que le livre l’affichera, reconstruite peu après chaque modification.</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>Par dé&amp;faut</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>Remet l’image à sa position par défaut.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Apply the settings and close the window.</source>
        <translation>Applique les réglages et ferme la fenêtre.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Undo every change made in this window and close it.</source>
        <translation>Annule toutes les modifications faites dans cette fenêtre et la ferme.</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Lin&amp;k</source>
        <translation>&amp;Lien</translation>
    </message>
    <message>
        <source>Use an image from the web.</source>
        <translation>Utiliser une image du Web.</translation>
    </message>
    <message>
        <source>Web address of the image</source>
        <translation>Adresse Web de l’image</translation>
    </message>
    <message>
        <source>An http or https address of the image.</source>
        <translation>Une adresse http ou https de l’image.</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local &amp;file</source>
        <translation>Fichier l&amp;ocal</translation>
    </message>
    <message>
        <source>Use an image file from this computer; it is copied into the book.</source>
        <translation>Utiliser un fichier image de cet ordinateur ; il est copié dans le livre.</translation>
    </message>
    <message>
        <source>Chosen image file</source>
        <translation>Fichier image choisi</translation>
    </message>
    <message>
        <source>The name of the image file copied into the book. Choose it with Browse.</source>
        <translation>Le nom du fichier image copié dans le livre. Choisissez-le avec « Parcourir ».</translation>
    </message>
    <message>
        <source>Br&amp;owse...</source>
        <translation>Pa&amp;rcourir...</translation>
    </message>
    <message>
        <source>Choose an image file from this computer.</source>
        <translation>Choisir un fichier image sur cet ordinateur.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>Save the image choice.</source>
        <translation>Enregistrer le choix de l’image.</translation>
    </message>
    <message>
        <source>Thumbnail of the chosen image</source>
        <translation>Miniature de l’image choisie</translation>
    </message>
    <message>
        <source>A small picture of the chosen image file.</source>
        <translation>Un petit aperçu du fichier image choisi.</translation>
    </message>
    <message>
        <source>The size of the chosen image in pixels, or why it cannot be shown.</source>
        <translation>La taille de l’image choisie en pixels, ou la raison pour laquelle elle ne peut pas être affichée.</translation>
    </message>
</context>
</TS>
