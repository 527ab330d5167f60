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
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Réglages du module - Image Plugin</translation>
    </message>
    <message>
        <source>Position on the page</source>
        <translation>Position sur la page</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it.</source>
        <translation>Faites glisser le cadre pour déplacer l&apos;image, ou ses poignées pour la redimensionner.</translation>
    </message>
    <message>
        <source>Left (%):</source>
        <translation>Gauche (%) :</translation>
    </message>
    <message>
        <source>Top (%):</source>
        <translation>Haut (%) :</translation>
    </message>
    <message>
        <source>Right (%):</source>
        <translation>Droite (%) :</translation>
    </message>
    <message>
        <source>Bottom (%):</source>
        <translation>Bas (%) :</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>Transparency (%):</source>
        <translation>Transparence (%) :</translation>
    </message>
    <message>
        <source>Layer:</source>
        <translation>Calque :</translation>
    </message>
    <message>
        <source>Above the page content</source>
        <translation>Au-dessus du contenu de la page</translation>
    </message>
    <message>
        <source>Below the page content</source>
        <translation>Sous le contenu de la page</translation>
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
        <source>Default</source>
        <translation>Par défaut</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>Remet l&apos;image à sa position par défaut.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Link</source>
        <translation>Lien</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local file</source>
        <translation>Fichier local</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Parcourir...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
</context>
</TS>
